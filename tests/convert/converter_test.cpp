// Promises of all six converters: their interface, its virtual slots and their type information, as
// seen from outside the library.
#include "convert/converter.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/convert/conversions.h"

namespace pb = zorl2::protobuf;

namespace {

template <typename ConverterClass, typename ProtoClass, typename NativeRecord>
struct Traits {
  using Class = ConverterClass;
  using Proto = ProtoClass;
  using Native = NativeRecord;
  using Base = Converter<Proto, Native>;
};

using AllConverters = testing::Types<
    Traits<ZORIDConverter, pb::Zorid, zorid_t>,
    Traits<IntfEntryConverter, pb::IntfEntry, IntfEntry>,
    Traits<ShutStateConverter, pb::ShutStateSync, ShutStateInfoSyncSignal>,
    Traits<BlockStateConverter, pb::BlockStateSync, BlockStateInfoSyncSignal>,
    Traits<ZORL2InfoClientConfigConverter, pb::InformationClient, ZORL2InfoClientConfig>,
    Traits<LagMemberConverter, pb::LagMemberOperationProto, LagMemberOperation>>;

template <typename T>
class EveryConverter : public testing::Test {};
TYPED_TEST_SUITE(EveryConverter, AllConverters);

TYPED_TEST(EveryConverter, DerivesFromItsInterfaceAndHoldsNothing) {
  using Class = typename TypeParam::Class;
  using Base = typename TypeParam::Base;
  static_assert(std::is_convertible_v<Class*, Base*>, "a public base");
  static_assert(sizeof(Class) == sizeof(void*), "nothing but the pointer to its functions");
  static_assert(std::is_abstract_v<Base> && std::has_virtual_destructor_v<Base>);
  static_assert(std::is_default_constructible_v<Class> && std::is_copy_constructible_v<Class>);
  Class converter;
  EXPECT_EQ(static_cast<void*>(&converter), static_cast<void*>(static_cast<Base*>(&converter)));
}

template <typename Traits>
class OtherImplementation : public Traits::Base {
 public:
  explicit OtherImplementation(bool& destroyed) : destroyed_(destroyed) {}
  ~OtherImplementation() override { destroyed_ = true; }
  bool Convert(const typename Traits::Proto&, typename Traits::Native&) override { return true; }
  bool Convert(const typename Traits::Native&, typename Traits::Proto&) override { return false; }

 private:
  bool& destroyed_;
};

TYPED_TEST(EveryConverter, TypeQueriesAndCastsDistinguishItFromOtherImplementations) {
  using Class = typename TypeParam::Class;
  using Base = typename TypeParam::Base;
  Class converter;
  Base& interface = converter;
  EXPECT_EQ(typeid(interface), typeid(Class));
  EXPECT_EQ(dynamic_cast<Class*>(&interface), &converter);
  bool destroyed = false;
  std::unique_ptr<Base> other = std::make_unique<OtherImplementation<TypeParam>>(destroyed);
  EXPECT_EQ(dynamic_cast<Class*>(other.get()), nullptr);
  other.reset();
  EXPECT_TRUE(destroyed);
}

// In the C++ ABI of the platform a pointer to a virtual member function holds the offset of its
// slot plus one.
template <typename MemberFunction>
std::ptrdiff_t SlotOf(MemberFunction function) {
  static_assert(sizeof(function) == 2 * sizeof(std::ptrdiff_t));
  std::ptrdiff_t words[2];
  std::memcpy(words, &function, sizeof(words));
  EXPECT_EQ(words[0] % 2, 1) << "not virtual";
  EXPECT_EQ(words[1], 0);
  return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

// Slots 0 and 1 are the destructor, without and with deletion.
TYPED_TEST(EveryConverter, HasMessageToNativeInSlot2AndNativeToMessageInSlot3) {
  using Proto = typename TypeParam::Proto;
  using Native = typename TypeParam::Native;
  using ToNative = bool (TypeParam::Base::*)(const Proto&, Native&);
  using ToMessage = bool (TypeParam::Base::*)(const Native&, Proto&);
  EXPECT_EQ(SlotOf(static_cast<ToNative>(&TypeParam::Base::Convert)), 2);
  EXPECT_EQ(SlotOf(static_cast<ToMessage>(&TypeParam::Base::Convert)), 3);
}

TYPED_TEST(EveryConverter, TheLibraryExportsItsTypeInformationAndFunctions) {
  // The library is loaded already; this only returns its handle.
  void* library = dlopen("libzorl2_serialize.so.1", RTLD_LAZY | RTLD_NOLOAD);
  ASSERT_NE(library, nullptr) << dlerror();
  for (const std::type_info* type :
       {&typeid(typename TypeParam::Class), &typeid(typename TypeParam::Base)}) {
    for (const char* prefix : {"_ZTI", "_ZTS", "_ZTV"}) {
      const std::string symbol = prefix + std::string(type->name());
      EXPECT_NE(dlsym(library, symbol.c_str()), nullptr) << symbol;
    }
  }
  typename TypeParam::Class converter;
  void* const* functions = nullptr;
  std::memcpy(&functions, static_cast<const void*>(&converter), sizeof(functions));
  for (int slot = 0; slot < 4; ++slot) {
    Dl_info info;
    ASSERT_NE(dladdr(functions[slot], &info), 0);
    EXPECT_THAT(info.dli_fname, testing::HasSubstr("libzorl2_serialize.so")) << slot;
  }
  dlclose(library);
}

// Calls through the interface convert a default record to a message and back, and deleting through
// the interface releases the converter.
TYPED_TEST(EveryConverter, CallsThroughTheInterfaceReachTheConverter) {
  const std::unique_ptr<typename TypeParam::Base> converter =
      std::make_unique<typename TypeParam::Class>();
  typename TypeParam::Native record{};
  typename TypeParam::Proto message;
  EXPECT_TRUE(zorl2_test::Silently([&] { return converter->Convert(record, message); }));
  EXPECT_GT(message.ByteSizeLong(), 0U);
  EXPECT_TRUE(zorl2_test::Silently([&] { return converter->Convert(message, record); }));
}

}  // namespace
