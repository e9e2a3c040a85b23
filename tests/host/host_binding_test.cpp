// A process defines both host functions before it loads the library.
#include <dlfcn.h>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

// One test, because a library that is loaded stays loaded.
TEST(HostBinding, TheLibraryLoadsOnlyAfterBothHostFunctionsAreDefined) {
  for (const int mode : {RTLD_LAZY, RTLD_NOW}) {
    ASSERT_EQ(dlopen(ZORL2_LIBRARY, mode), nullptr);
    EXPECT_THAT(dlerror(), HasSubstr("undefined symbol: pvex_"));
  }
  ASSERT_NE(dlopen(ZORL2_HOST_MODULE, RTLD_NOW | RTLD_GLOBAL), nullptr) << dlerror();
  EXPECT_NE(dlopen(ZORL2_LIBRARY, RTLD_LAZY), nullptr) << dlerror();
}

}  // namespace
