// Fuzz target: any bytes as a .zip file.
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  nxfv::fuzz::ListInput(data, size, "zip");
  return 0;
}
