// Writes the example device tree: vexa-example-generator SOURCES_DIR DEVICE_ROOT
#include <cstdio>
#include <string>

#include "examples/generator/example_device_tree.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s SOURCES_DIR DEVICE_ROOT\n", argv[0]);
    return 2;
  }
  vexa::example::ExampleDeviceTree tree(argv[1], argv[2]);
  std::string error;
  if (!tree.Build(&error)) {
    std::fprintf(stderr, "vexa-example-generator: %s\n", error.c_str());
    return 1;
  }
  return 0;
}
