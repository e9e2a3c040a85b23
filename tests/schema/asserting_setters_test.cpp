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
#include "tests/schema/schema_files.h"

namespace pb = zorl2::protobuf;

namespace {

// An unlisted value in a variable, so that the compiler cannot see it.
volatile int unlisted = 99;

#define EXPECT_ABORT(message, setter, type)                                \
  EXPECT_DEATH(pb::message().setter(static_cast<pb::type>(int{unlisted})), \
               "::zorl2::protobuf::" #type "_IsValid\\(value\\)")

TEST(AssertingSettersDeathTest, AnUnlistedValueAborts) {
  EXPECT_ABORT(StatusInfo, set_adminstatus, AdminStatus);
  EXPECT_ABORT(StatusInfo, set_operationalstatus, OperationalStatus);
  EXPECT_ABORT(StatusInfo, set_linkstatus, LinkStatus);
  EXPECT_ABORT(PhysicalInfo, set_eth_speed, EthernetSpeed);
  EXPECT_ABORT(PhysicalInfo, set_eth_duplex_mode, EthernetDuplexMode);
  EXPECT_ABORT(TypeInfo, set_interfacetype, InterfaceType);
  EXPECT_ABORT(TypeInfo, set_vlantype, VlanType);
  EXPECT_ABORT(BlockInfo, set_protocol, ProtocolType);
  EXPECT_ABORT(BlockInfo, set_state, BlockState);
  EXPECT_ABORT(IntfEntry, add_shutdownprotos, ProtocolType);
  EXPECT_ABORT(IntfEntry, set_intfcategory, InterfaceCategory);
  EXPECT_ABORT(InformationClient, set_protocoltype, ProtocolType);
  EXPECT_ABORT(BlockStateInfo, set_state, BlockState);
  EXPECT_ABORT(ShutStateSync, set_shutprotocol, ProtocolType);
  EXPECT_ABORT(BlockStateSync, set_blockprotocol, ProtocolType);
  EXPECT_ABORT(IntfIndication, set_indtype, IndicationType);
  pb::TypeInfo().set_vlantype(pb::ANY);
}

// Independent of the caller: the texts of the checks are in the library only if its sources were
// compiled with assertions.
TEST(AssertingSetters, TheLibraryWasCompiledWithAssertions) {
  Dl_info info;
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&SerializeBlockState), &info), 0);
  ASSERT_THAT(info.dli_fname, testing::HasSubstr("libzorl2_serialize.so"));
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
