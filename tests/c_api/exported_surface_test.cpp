// What the library exports, name by name: everything that a program outside is promised, and not
// one symbol more.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Names = std::set<std::string>;

// The demangled names. nm itself must speak: reading the file here would be no second opinion.
Names Exported() {
  const std::unique_ptr<FILE, int (*)(FILE*)> nm(
      popen("nm --dynamic --defined-only --demangle \"" ZORL2_LIBRARY "\"", "r"), pclose);
  std::string text;
  std::array<char, 4096> piece;
  while (std::size_t size = std::fread(piece.data(), 1, piece.size(), nm.get())) {
    text.append(piece.data(), size);
  }
  Names names;
  std::istringstream lines(text);
  // Address, type and name, with one space between them.
  for (std::string line; std::getline(lines, line);) names.insert(line.substr(19));
  return names;
}

const std::string kMessages = "zorl2::protobuf::";

void AddConverter(const std::string& name, const std::string& message, const std::string& native,
                  Names& names) {
  const std::string proto = kMessages + message;
  const std::string base = "Converter<" + proto + ", " + native + ">";
  names.insert({name + "::Convert(" + proto + " const&, " + native + "&)",
                name + "::Convert(" + native + " const&, " + proto + "&)",
                name + "::~" + name + "()"});
  for (const std::string& polymorphic : {name, base}) {
    for (const char* what : {"vtable for ", "typeinfo for ", "typeinfo name for "}) {
      names.insert(what + polymorphic);
    }
  }
}

void AddHelperFunction(const std::string& function, const std::string& type, Names& names) {
  const std::string message = kMessages + type;
  const std::string native = "IntfEntry::" + type;
  names.insert({"IntfEntryConvertHelperProtobuf::Convert" + function + "(" + message + " const&, " +
                    native + "&)",
                "IntfEntryConvertHelperZOR::Convert" + function + "(" + native + " const&, " +
                    message + "&)"});
}

// Everything that is not generated from the schema.
Names OwnSurface() {
  Names names = {
      "SerializeProtocolType(ProtocolType)",
      "DeserializeProtocolType(zorl2::protobuf::ProtocolType)",
      "SerializeBlockState(BlockState)",
      "DeserializeBlockState(zorl2::protobuf::BlockState)",
      "IntfEntry::getId() const",
      "IntfEntry::getParent() const",
      "IntfEntry::getGeneralInfo() const",
      "IntfEntry::getStatusInfo() const",
      "IntfEntry::getPhysicalInfo() const",
      "IntfEntry::getTypeInfo() const",
      "IntfEntry::getShutdownProtos[abi:cxx11]() const",
      "IntfEntry::getBlockInfo[abi:cxx11]() const",
      "IntfEntry::getInterfaceCategory() const",
      "IntfEntryBuilder::IntfEntryBuilder(IntfEntry&&)",
      "IntfEntryBuilder::addZorId(zorid_t const&)",
      "IntfEntryBuilder::addParent(zorid_t const&)",
      "IntfEntryBuilder::addGeneralInfo(IntfEntry::GeneralInfo const&)",
      "IntfEntryBuilder::addStatusInfo(IntfEntry::StatusInfo const&)",
      "IntfEntryBuilder::addPhysicalInfo(IntfEntry::PhysicalInfo const&)",
      "IntfEntryBuilder::addTypeInfo(IntfEntry::TypeInfo const&)",
      "IntfEntryBuilder::addShutdownProto(ProtocolType)",
      "IntfEntryBuilder::addBlockInfo(IntfEntry::BlockInfo const&)",
      "IntfEntryBuilder::setInterfaceCategory(InterfaceCategory)",
      "IntfEntryBuilder::Build()",
      "init_intf_entry",
      "destroy_intf_entry",
      "init_intf_entry_list",
      "destroy_intf_entry_list",
  };
  AddConverter("ZORIDConverter", "Zorid", "zorid_t", names);
  AddConverter("IntfEntryConverter", "IntfEntry", "IntfEntry", names);
  AddConverter("ShutStateConverter", "ShutStateSync", "ShutStateInfoSyncSignal", names);
  AddConverter("BlockStateConverter", "BlockStateSync", "BlockStateInfoSyncSignal", names);
  AddConverter("ZORL2InfoClientConfigConverter", "InformationClient", "ZORL2InfoClientConfig",
               names);
  AddConverter("LagMemberConverter", "LagMemberOperationProto", "LagMemberOperation", names);
  for (const char* type : {"GeneralInfo", "StatusInfo", "PhysicalInfo", "InterfaceFlags",
                           "TypeInfo", "BlockInfo", "AdminStatus", "OperationalStatus",
                           "LinkStatus", "EthernetSpeed", "InterfaceType", "VlanType"}) {
    AddHelperFunction(type, type, names);
  }
  AddHelperFunction("DuplexMode", "EthernetDuplexMode", names);
  return names;
}

const char* const kMessageNames[] = {"Zorid",
                                     "IntfCategory",
                                     "InformationClient",
                                     "InterfaceFlags",
                                     "GeneralInfo",
                                     "StatusInfo",
                                     "PhysicalInfo",
                                     "TypeInfo",
                                     "BlockInfo",
                                     "IntfEntry",
                                     "IntfEntryList",
                                     "IntfIndication",
                                     "ShutStateInfo",
                                     "ShutStateSync",
                                     "BlockStateInfo",
                                     "BlockStateSync",
                                     "HoldTimeInstance",
                                     "HoldTimeConfig",
                                     "LagMemberOperationProto",
                                     "LagLoadBalance",
                                     "LagLoadBalanceHashType",
                                     "RedundancyGroupFields",
                                     "L2SubinterfaceOperation",
                                     "VirtualInterfaceOperation",
                                     "SysInfo",
                                     "SysInfoIndication",
                                     "AuditInfo"};

const char* const kEnumerationNames[] = {"ProtocolType",  "BlockState",         "InterfaceCategory",
                                         "AdminStatus",   "OperationalStatus",  "LinkStatus",
                                         "EthernetSpeed", "EthernetDuplexMode", "InterfaceType",
                                         "VlanType",      "IndicationType"};

const char* const kFileNames[] = {
    "zorid",         "information_5fclient", "interface_5fentry", "intf_5fstate", "lag",
    "l2_5fsub_5fif", "virtual_5fif",         "sysinfo",           "audit_5finfo"};

// What the inline functions of the generated headers need of the library.
Names GeneratedSurface() {
  Names names;
  for (const std::string message : kMessageNames) {
    const std::string full = kMessages + message;
    names.insert({full + "::" + message + "(" + full + " const&)",
                  full + "::" + message + "(google::protobuf::Arena*, bool)",
                  full + "::~" + message + "()",
                  full + "::Clear()",
                  full + "::CopyFrom(" + full + " const&)",
                  full + "::IsInitialized() const",
                  full + "::ByteSizeLong() const",
                  full + "::GetMetadata() const",
                  full + "::GetClassData() const",
                  full + "::_class_data_",
                  full + "::_InternalParse(char const*, google::protobuf::internal::ParseContext*)",
                  full + "::_InternalSerialize(unsigned char*, "
                         "google::protobuf::io::EpsCopyOutputStream*) const",
                  full + "::MergeImpl(google::protobuf::Message&, google::protobuf::Message "
                         "const&)",
                  full + "::SetCachedSize(int) const",
                  full + "::InternalSwap(" + full + "*)",
                  kMessages + "_" + message + "_default_instance_",
                  full + "* google::protobuf::Arena::CreateMaybeMessage<" + full +
                      ">(google::protobuf::Arena*)",
                  "vtable for " + full,
                  "typeinfo for " + full,
                  "typeinfo name for " + full});
  }
  for (const std::string enumeration : kEnumerationNames) {
    names.insert(
        {kMessages + enumeration + "_IsValid(int)", kMessages + enumeration + "_descriptor()"});
  }
  for (const std::string file : kFileNames) {
    names.insert(
        {"descriptor_table_" + file + "_2eproto", "TableStruct_" + file + "_2eproto::offsets"});
  }
  return names;
}

// Functions of the classes above that stand inline in a header and that some compilers still emit.
bool IsInlineFunctionOfOurs(const std::string& name) {
  for (const std::string message : kMessageNames) {
    if (name.rfind(kMessages + message + "::", 0) == 0) return true;
  }
  return name.rfind("Converter<zorl2::protobuf::", 0) == 0 &&
         name.find("::~Converter()") != std::string::npos;
}

Names Without(const Names& names, const Names& others) {
  Names rest;
  for (const std::string& name : names) {
    if (others.count(name) == 0) rest.insert(name);
  }
  return rest;
}

TEST(ExportedSurface, HoldsEveryClassAndFunctionThatUsersArePromised) {
  EXPECT_THAT(Without(OwnSurface(), Exported()), testing::IsEmpty());
}

TEST(ExportedSurface, HoldsEveryGeneratedClassAndEnumeration) {
  EXPECT_THAT(Without(GeneratedSurface(), Exported()), testing::IsEmpty());
}

TEST(ExportedSurface, HoldsNothingElse) {
  Names rest;
  for (const std::string& name : Without(Without(Exported(), OwnSurface()), GeneratedSurface())) {
    if (!IsInlineFunctionOfOurs(name)) rest.insert(name);
  }
  EXPECT_THAT(rest, testing::IsEmpty());
}

}  // namespace
