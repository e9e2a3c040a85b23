// reopen LIBRARY: loads, uses and closes the library, twice.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "c_api/intf_entry.h"

template <typename Function>
static Function* Symbol(void* library, const char* name) {
  void* address = dlsym(library, name);
  if (address == nullptr) {
    std::printf("FAILED: %s\n", dlerror());
    std::exit(1);
  }
  return reinterpret_cast<Function*>(address);
}

static bool UseOnce(const char* path) {
  void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::printf("FAILED: %s\n", dlerror());
    return false;
  }
  intf_entry_t* record = Symbol<decltype(init_intf_entry)>(library, "init_intf_entry")();
  std::strcpy(record->intf_name, "ge-0/0/1");
  Symbol<decltype(destroy_intf_entry)>(library, "destroy_intf_entry")(&record);
  // SerializeProtocolType(ProtocolType): STP is 3 natively and 4 in a message.
  const int stp = Symbol<int(int)>(library, "_Z21SerializeProtocolType12ProtocolType")(3);
  const bool stays_out = dlsym(RTLD_DEFAULT, "init_intf_entry") == nullptr;
  return dlclose(library) == 0 && record == nullptr && stp == 4 && stays_out;
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  for (int i = 0; i < 3; ++i) {
    if (!UseOnce(argv[1])) {
      std::printf("FAILED: use %d\n", i + 1);
      return 1;
    }
  }
  std::printf("proved: loaded with RTLD_LOCAL, used, closed and opened again, three times\n");
  return 0;
}
