// The schema as this process has it registered, and as it stands in the files, against the tables.
#include <gmock/gmock.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/descriptor.pb.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "audit_info.pb.h"
#include "interface_entry.pb.h"
#include "l2_sub_if.pb.h"
#include "lag.pb.h"
#include "sysinfo.pb.h"
#include "tests/serialize/schema_tables.h"
#include "tests/support/message_matchers.h"
#include "virtual_if.pb.h"

namespace gp = google::protobuf;
namespace pb = zorl2::protobuf;

using zorl2_test::EqualsMessage;

namespace {

gp::FieldDescriptorProto Expected(const zorl2_test::Field& field) {
  static const std::map<std::string, gp::FieldDescriptorProto::Type> kScalars = {
      {"bool", gp::FieldDescriptorProto::TYPE_BOOL},
      {"int32", gp::FieldDescriptorProto::TYPE_INT32},
      {"uint32", gp::FieldDescriptorProto::TYPE_UINT32},
      {"uint64", gp::FieldDescriptorProto::TYPE_UINT64},
      {"string", gp::FieldDescriptorProto::TYPE_STRING}};
  static const std::map<zorl2_test::Label, gp::FieldDescriptorProto::Label> kLabels = {
      {zorl2_test::kRequired, gp::FieldDescriptorProto::LABEL_REQUIRED},
      {zorl2_test::kOptional, gp::FieldDescriptorProto::LABEL_OPTIONAL},
      {zorl2_test::kRepeated, gp::FieldDescriptorProto::LABEL_REPEATED}};
  gp::FieldDescriptorProto proto;
  proto.set_name(field.name);
  proto.set_number(field.number);
  proto.set_label(kLabels.at(field.label));
  const auto scalar = kScalars.find(field.type);
  if (scalar != kScalars.end()) {
    proto.set_type(scalar->second);
  } else if (field.type.rfind("enum ", 0) == 0) {
    proto.set_type(gp::FieldDescriptorProto::TYPE_ENUM);
    proto.set_type_name(".zorl2.protobuf." + field.type.substr(5));
  } else {
    proto.set_type(gp::FieldDescriptorProto::TYPE_MESSAGE);
    proto.set_type_name(".zorl2.protobuf." + field.type);
  }
  if (field.packed) proto.mutable_options()->set_packed(true);
  return proto;
}

// The whole file as the tables have it: what they do not name (options, defaults, services,
// extensions, reserved names, nested types) is absent here, so that its presence is a difference.
gp::FileDescriptorProto Expected(const zorl2_test::File& file) {
  gp::FileDescriptorProto proto;
  proto.set_name(file.name);
  proto.set_package("zorl2.protobuf");
  for (const std::string& import : file.imports) proto.add_dependency(import);
  for (const zorl2_test::Message& message : file.messages) {
    gp::DescriptorProto& type = *proto.add_message_type();
    type.set_name(message.name);
    for (const zorl2_test::Field& field : message.fields) *type.add_field() = Expected(field);
  }
  for (const zorl2_test::Enum& enumeration : file.enums) {
    gp::EnumDescriptorProto& type = *proto.add_enum_type();
    type.set_name(enumeration.name);
    for (const auto& [name, number] : enumeration.values) {
      type.add_value()->set_name(name);
      type.mutable_value()->rbegin()->set_number(number);
    }
  }
  return proto;
}

class Schema : public testing::TestWithParam<zorl2_test::File> {
 protected:
  static std::string Source() {
    const std::string path =
        std::string(ZORL2_SOURCE_DIR) + "/serialize/protobuf/" + GetParam().name;
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_P(Schema, IsRegisteredAsTabled) {
  const gp::FileDescriptor* file =
      gp::DescriptorPool::generated_pool()->FindFileByName(GetParam().name);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->syntax(), gp::FileDescriptor::SYNTAX_PROTO2);
  gp::FileDescriptorProto registered;
  file->CopyTo(&registered);
  EXPECT_THAT(registered, EqualsMessage(Expected(GetParam())));
}

TEST_P(Schema, EveryEnumerationStartsAtItsDefaultOfZero) {
  for (const zorl2_test::Enum& enumeration : GetParam().enums) {
    const gp::EnumDescriptor* type = gp::DescriptorPool::generated_pool()->FindEnumTypeByName(
        "zorl2.protobuf." + enumeration.name);
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->value(0)->number(), 0) << enumeration.name;
  }
}

TEST_P(Schema, TheFileNamesNoSyntaxAndNoOption) {
  const std::string source = Source();
  EXPECT_FALSE(
      std::regex_search(source, std::regex("(^|\n)\\s*(syntax|option|service|extend)\\b")));
}

TEST_P(Schema, TheFileQualifiesEveryTypeFully) {
  const std::string source = Source();
  const std::regex field("\n\\s*(required|optional|repeated)\\s+(\\S+)");
  std::vector<std::string> types;
  for (std::sregex_iterator at(source.begin(), source.end(), field), end; at != end; ++at) {
    types.push_back((*at)[2]);
  }
  std::vector<std::string> expected;
  for (const zorl2_test::Message& message : GetParam().messages) {
    for (const zorl2_test::Field& row : message.fields) {
      const gp::FieldDescriptorProto proto = Expected(row);
      expected.push_back(proto.has_type_name() ? proto.type_name() : row.type);
    }
  }
  EXPECT_EQ(types, expected);
}

INSTANTIATE_TEST_SUITE_P(AllFiles, Schema, testing::ValuesIn(zorl2_test::SchemaFiles()),
                         [](const auto& file) {
                           return file.param.name.substr(0, file.param.name.find('.'));
                         });

TEST(SchemaAsAWhole, TheDescriptorSetOfTheBuildHoldsTheNineFilesAndNoOther) {
  std::ifstream file(std::string(ZORL2_BINARY_DIR) + "/serialize/protobuf/zorl2.desc",
                     std::ios::binary);
  gp::FileDescriptorSet set;
  ASSERT_TRUE(set.ParseFromIstream(&file));
  std::set<std::string> names, expected;
  for (const gp::FileDescriptorProto& proto : set.file()) names.insert(proto.name());
  for (const zorl2_test::File& tabled : zorl2_test::SchemaFiles()) expected.insert(tabled.name);
  EXPECT_EQ(names, expected);
  EXPECT_EQ(expected.size(), 9U);
}

// Each class answers with the descriptor of its own name.
TEST(SchemaAsAWhole, TheGeneratedClassesStandInThePackagesNamespace) {
  EXPECT_EQ(pb::Zorid::descriptor()->full_name(), "zorl2.protobuf.Zorid");
  EXPECT_EQ(pb::IntfCategory::descriptor()->full_name(), "zorl2.protobuf.IntfCategory");
  EXPECT_EQ(pb::InformationClient::descriptor()->full_name(), "zorl2.protobuf.InformationClient");
  EXPECT_EQ(pb::ShutStateSync::descriptor()->full_name(), "zorl2.protobuf.ShutStateSync");
  EXPECT_EQ(pb::HoldTimeConfig::descriptor()->full_name(), "zorl2.protobuf.HoldTimeConfig");
  EXPECT_EQ(pb::IntfEntryList::descriptor()->full_name(), "zorl2.protobuf.IntfEntryList");
  EXPECT_EQ(pb::IntfIndication::descriptor()->full_name(), "zorl2.protobuf.IntfIndication");
  EXPECT_EQ(pb::LagMemberOperationProto::descriptor()->full_name(),
            "zorl2.protobuf.LagMemberOperationProto");
  EXPECT_EQ(pb::L2SubinterfaceOperation::descriptor()->full_name(),
            "zorl2.protobuf.L2SubinterfaceOperation");
  EXPECT_EQ(pb::VirtualInterfaceOperation::descriptor()->full_name(),
            "zorl2.protobuf.VirtualInterfaceOperation");
  EXPECT_EQ(pb::SysInfoIndication::descriptor()->full_name(), "zorl2.protobuf.SysInfoIndication");
  EXPECT_EQ(pb::AuditInfo::descriptor()->full_name(), "zorl2.protobuf.AuditInfo");
}

// What the compiler generates beside each enumeration.
TEST(SchemaAsAWhole, EveryEnumerationHasItsValidityTestAndLimits) {
  EXPECT_EQ(pb::ProtocolType_MIN, 0);
  EXPECT_EQ(pb::ProtocolType_MAX, 12);
  EXPECT_FALSE(pb::ProtocolType_IsValid(-1));
  EXPECT_FALSE(pb::ProtocolType_IsValid(13));
  for (int number = 0; number <= 12; ++number) EXPECT_TRUE(pb::ProtocolType_IsValid(number));
  const auto covers = [](bool (*is_valid)(int), int last) {
    for (int number = 0; number <= last; ++number) EXPECT_TRUE(is_valid(number)) << number;
    EXPECT_FALSE(is_valid(-1));
    EXPECT_FALSE(is_valid(last + 1));
  };
  covers(pb::BlockState_IsValid, 1);
  covers(pb::AdminStatus_IsValid, 1);
  covers(pb::OperationalStatus_IsValid, 1);
  covers(pb::LinkStatus_IsValid, 1);
  covers(pb::EthernetSpeed_IsValid, 11);
  covers(pb::EthernetDuplexMode_IsValid, 2);
  covers(pb::InterfaceType_IsValid, 4);
  covers(pb::VlanType_IsValid, 4);
  covers(pb::InterfaceCategory_IsValid, 4);
  covers(pb::IndicationType_IsValid, 2);
}

}  // namespace
