// The setters of the enumerated fields, compiled with assertions, and the assertions that the
// library itself was compiled with.
#ifdef NDEBUG
#error "this file tests assertions and must be compiled with them"
#endif

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <string>

#include "convert/enum_serialization.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"

namespace pb = zorl2::protobuf;

using testing::HasSubstr;

namespace {

// A number that no enumeration lists, through a variable so that no compiler sees it coming.
volatile int unlisted = 99;

template <typename Enum>
Enum Unlisted() {
  return static_cast<Enum>(unlisted);
}

TEST(AssertingSettersDeathTest, EveryEnumeratedFieldOfAnEntryAborts) {
  EXPECT_DEATH(pb::StatusInfo().set_adminstatus(Unlisted<pb::AdminStatus>()),
               "::zorl2::protobuf::AdminStatus_IsValid\\(value\\)");
  EXPECT_DEATH(pb::StatusInfo().set_operationalstatus(Unlisted<pb::OperationalStatus>()),
               "::zorl2::protobuf::OperationalStatus_IsValid\\(value\\)");
  EXPECT_DEATH(pb::StatusInfo().set_linkstatus(Unlisted<pb::LinkStatus>()),
               "::zorl2::protobuf::LinkStatus_IsValid\\(value\\)");
  EXPECT_DEATH(pb::PhysicalInfo().set_eth_speed(Unlisted<pb::EthernetSpeed>()),
               "::zorl2::protobuf::EthernetSpeed_IsValid\\(value\\)");
  EXPECT_DEATH(pb::PhysicalInfo().set_eth_duplex_mode(Unlisted<pb::EthernetDuplexMode>()),
               "::zorl2::protobuf::EthernetDuplexMode_IsValid\\(value\\)");
  EXPECT_DEATH(pb::TypeInfo().set_interfacetype(Unlisted<pb::InterfaceType>()),
               "::zorl2::protobuf::InterfaceType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::TypeInfo().set_vlantype(Unlisted<pb::VlanType>()),
               "::zorl2::protobuf::VlanType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::BlockInfo().set_protocol(Unlisted<pb::ProtocolType>()),
               "::zorl2::protobuf::ProtocolType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::BlockInfo().set_state(Unlisted<pb::BlockState>()),
               "::zorl2::protobuf::BlockState_IsValid\\(value\\)");
  EXPECT_DEATH(pb::IntfEntry().add_shutdownprotos(Unlisted<pb::ProtocolType>()),
               "::zorl2::protobuf::ProtocolType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::IntfEntry().set_intfcategory(Unlisted<pb::InterfaceCategory>()),
               "::zorl2::protobuf::InterfaceCategory_IsValid\\(value\\)");
}

TEST(AssertingSettersDeathTest, SoDoThoseOfTheOtherMessages) {
  EXPECT_DEATH(pb::InformationClient().set_protocoltype(Unlisted<pb::ProtocolType>()),
               "::zorl2::protobuf::ProtocolType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::BlockStateInfo().set_state(static_cast<pb::BlockState>(2)),
               "::zorl2::protobuf::BlockState_IsValid\\(value\\)");
  EXPECT_DEATH(pb::ShutStateSync().set_shutprotocol(Unlisted<pb::ProtocolType>()),
               "::zorl2::protobuf::ProtocolType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::BlockStateSync().set_blockprotocol(Unlisted<pb::ProtocolType>()),
               "::zorl2::protobuf::ProtocolType_IsValid\\(value\\)");
  EXPECT_DEATH(pb::IntfIndication().set_indtype(Unlisted<pb::IndicationType>()),
               "::zorl2::protobuf::IndicationType_IsValid\\(value\\)");
}

TEST(AssertingSetters, AcceptEveryListedNumber) {
  pb::PhysicalInfo message;
  for (int number = 0; number <= pb::EthernetSpeed_MAX; ++number) {
    message.set_eth_speed(static_cast<pb::EthernetSpeed>(number));
    EXPECT_EQ(message.eth_speed(), number);
  }
}

// Whatever a caller chooses for its own code: the texts of the checks stand in the library only
// when its sources were compiled with assertions.
TEST(AssertingSetters, TheLibraryWasCompiledWithAssertions) {
  Dl_info info;
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&SerializeBlockState), &info), 0);
  ASSERT_THAT(info.dli_fname, HasSubstr("libzorl2_serialize.so"));
  std::ifstream file(info.dli_fname, std::ios::binary);
  const std::string library{std::istreambuf_iterator<char>(file), {}};
  for (const char* name :
       {"AdminStatus", "OperationalStatus", "LinkStatus", "EthernetSpeed", "EthernetDuplexMode",
        "InterfaceType", "VlanType", "ProtocolType", "BlockState", "InterfaceCategory"}) {
    EXPECT_NE(library.find(std::string("::zorl2::protobuf::") + name + "_IsValid(value)"),
              std::string::npos)
        << name;
  }
}

}  // namespace
