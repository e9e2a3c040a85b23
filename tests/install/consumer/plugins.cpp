// plugins FIRST SECOND: two plugins that both link the library, in one process.
#include <dlfcn.h>

#include <cstdio>
#include <string>

#include "plugin.h"

struct Plugin {
  void* handle;
  decltype(EncodeName)* encode;
  decltype(DecodeName)* decode;
};

static bool Load(const char* path, Plugin& plugin) {
  plugin.handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (plugin.handle == nullptr) {
    std::printf("FAILED: %s\n", dlerror());
    return false;
  }
  plugin.encode = reinterpret_cast<decltype(EncodeName)*>(dlsym(plugin.handle, "EncodeName"));
  plugin.decode = reinterpret_cast<decltype(DecodeName)*>(dlsym(plugin.handle, "DecodeName"));
  return plugin.encode != nullptr && plugin.decode != nullptr;
}

int main(int argc, char** argv) {
  Plugin first;
  Plugin second;
  if (argc != 3 || !Load(argv[1], first) || !Load(argv[2], second)) return 1;
  std::string bytes;
  std::string name;
  if (!first.encode("from the first", bytes) || !second.decode(bytes, name) ||
      name != "from the first" || !second.encode("from the second", bytes) ||
      !first.decode(bytes, name) || name != "from the second") {
    std::printf("FAILED: the plugins do not understand each other\n");
    return 1;
  }
  // Without the first plugin the second one still works.
  if (dlclose(first.handle) != 0 || !second.encode("alone", bytes) || !second.decode(bytes, name) ||
      name != "alone") {
    std::printf("FAILED: the second plugin without the first\n");
    return 1;
  }
  std::printf(
      "proved: two plugins that both link the library exchanged entries in one process, "
      "and one went on after the other was closed\n");
  return 0;
}
