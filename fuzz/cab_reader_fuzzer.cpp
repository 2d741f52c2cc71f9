// Fuzz target: any bytes as a .cab file.
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  nxfv::fuzz::ListInput(data, size, "cab");
  return 0;
}
