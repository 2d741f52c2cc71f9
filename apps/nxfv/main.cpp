// Placeholder host: lists a folder of the simulated platform until the
// real command lands.
#include <cstdio>

#include "platform/sim/simulated_platform.h"

int main() {
  nxfv::SimulatedPlatform p;
  p.SimFiles().AddFile("C:\\docs\\readme.txt", 1200);
  p.SimFiles().AddFolder("C:\\docs\\sub");
  p.Files().Enumerate("C:\\docs\\", [](const nxfv::FindData& d) {
    std::printf("%s\n", d.name.c_str());
    return true;
  });
  return 0;
}
