// The schema of this tree against the released one, and the comparison itself against changes made
// by hand.
#include "schema/schema_guard.h"

#include <gmock/gmock.h>
#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include "audit_info.pb.h"
#include "interface_entry.pb.h"

namespace gp = google::protobuf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr char kReleased[] = ZORL2_SOURCE_DIR "/tests/schema/released_schema.txtpb";
constexpr char kCurrent[] = ZORL2_BINARY_DIR "/serialize/protobuf/zorl2.desc";

std::string Read(const char* path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

gp::FileDescriptorSet Released() {
  gp::FileDescriptorSet set;
  EXPECT_TRUE(gp::TextFormat::ParseFromString(Read(kReleased), &set)) << kReleased;
  return set;
}

gp::FileDescriptorSet Current() {
  gp::FileDescriptorSet set;
  EXPECT_TRUE(set.ParseFromString(Read(kCurrent))) << kCurrent;
  return set;
}

TEST(Schema, NothingBreaksAPeerOfTheReleasedSchema) {
  const SchemaDifferences found = CompareSchemas(Released(), Current());
  EXPECT_THAT(found.breaking, IsEmpty()) << "The wire schema no longer fits what is released:\n"
                                         << SchemaLines(found.breaking) << kAcceptBreak;
}

TEST(Schema, TheReleasedDescriptionIsComplete) {
  const SchemaDifferences found = CompareSchemas(Released(), Current());
  EXPECT_THAT(found.additions, IsEmpty())
      << "No peer minds these additions, but nothing guards them yet:\n"
      << SchemaLines(found.additions) << kAcceptAddition;
}

TEST(Schema, TheInstalledDescriptorSetIsWhatTheClassesWereMadeOf) {
  // Mentions the library, so that it is loaded and has registered its files.
  ASSERT_NE(zorl2::protobuf::AuditInfo::descriptor(), nullptr);
  const gp::FileDescriptorSet current = Current();
  EXPECT_EQ(current.file_size(), 9);
  for (const gp::FileDescriptorProto& file : current.file()) {
    const gp::FileDescriptor* compiled =
        gp::DescriptorPool::generated_pool()->FindFileByName(file.name());
    ASSERT_NE(compiled, nullptr) << file.name();
    gp::FileDescriptorProto expected;
    compiled->CopyTo(&expected);
    compiled->CopyJsonNameTo(&expected);
    EXPECT_EQ(file.DebugString(), expected.DebugString());
  }
}

// One change of the released schema and what the guard must say about it.
class Change : public testing::Test {
 protected:
  gp::FileDescriptorProto& File(const std::string& name) {
    for (auto& file : *set_.mutable_file()) {
      if (file.name() == name) return file;
    }
    ADD_FAILURE() << name;
    return *set_.add_file();
  }

  gp::DescriptorProto& Message(const std::string& file, const std::string& name) {
    for (auto& message : *File(file).mutable_message_type()) {
      if (message.name() == name) return message;
    }
    ADD_FAILURE() << name;
    return *File(file).add_message_type();
  }

  gp::EnumDescriptorProto& Enumeration(const std::string& file, const std::string& name) {
    for (auto& enumeration : *File(file).mutable_enum_type()) {
      if (enumeration.name() == name) return enumeration;
    }
    ADD_FAILURE() << name;
    return *File(file).add_enum_type();
  }

  SchemaDifferences Compare() { return CompareSchemas(Released(), set_); }

  gp::FileDescriptorSet set_ = Released();
};

TEST_F(Change, NoneIsNoDifference) {
  EXPECT_THAT(Compare().breaking, IsEmpty());
  EXPECT_THAT(Compare().additions, IsEmpty());
}

TEST_F(Change, ARenumberedFieldBreaks) {
  Message("interface_entry.proto", "PhysicalInfo").mutable_field(0)->set_number(9);
  EXPECT_THAT(Compare().breaking,
              ElementsAre(AllOf(HasSubstr("zorl2.protobuf.PhysicalInfo.intf_mtu"),
                                HasSubstr("from 1 to 9"), HasSubstr("Give it its number back"))));
}

TEST_F(Change, AnotherTypeBreaks) {
  Message("interface_entry.proto", "PhysicalInfo")
      .mutable_field(0)
      ->set_type(gp::FieldDescriptorProto::TYPE_UINT64);
  EXPECT_THAT(Compare().breaking, ElementsAre(HasSubstr("from uint32 to uint64")));
}

TEST_F(Change, AnotherEnumerationAsTypeBreaks) {
  Message("interface_entry.proto", "PhysicalInfo")
      .mutable_field(1)
      ->set_type_name(".zorl2.protobuf.VlanType");
  EXPECT_THAT(
      Compare().breaking,
      ElementsAre(HasSubstr("from .zorl2.protobuf.EthernetSpeed to .zorl2.protobuf.VlanType")));
}

TEST_F(Change, AnotherLabelBreaks) {
  Message("interface_entry.proto", "GeneralInfo")
      .mutable_field(2)
      ->set_label(gp::FieldDescriptorProto::LABEL_REQUIRED);
  EXPECT_THAT(Compare().breaking,
              ElementsAre(AllOf(HasSubstr("bridge_port_number"),
                                HasSubstr("from optional to required"), HasSubstr("refuse"))));
}

TEST_F(Change, ARenamedFieldBreaks) {
  Message("interface_entry.proto", "GeneralInfo").mutable_field(0)->set_name("name");
  EXPECT_THAT(Compare().breaking,
              ElementsAre(AllOf(HasSubstr("intf_name"), HasSubstr("is now called name"))));
}

TEST_F(Change, ARemovedRequiredFieldBreaks) {
  Message("sysinfo.proto", "SysInfo").mutable_field()->RemoveLast();
  EXPECT_THAT(Compare().breaking, ElementsAre(AllOf(HasSubstr("SysInfo.sys_descr"),
                                                    HasSubstr("required"), HasSubstr("is gone"))));
}

TEST_F(Change, AnAddedRequiredFieldBreaks) {
  gp::FieldDescriptorProto& field = *Message("sysinfo.proto", "SysInfo").add_field();
  field.set_name("sys_location");
  field.set_number(4);
  field.set_type(gp::FieldDescriptorProto::TYPE_STRING);
  field.set_label(gp::FieldDescriptorProto::LABEL_REQUIRED);
  EXPECT_THAT(Compare().breaking, ElementsAre(AllOf(HasSubstr("SysInfo.sys_location"),
                                                    HasSubstr("Make the field optional"))));
}

TEST_F(Change, AnAddedOptionalFieldIsAnAddition) {
  gp::FieldDescriptorProto& field = *Message("sysinfo.proto", "SysInfo").add_field();
  field.set_name("sys_location");
  field.set_number(4);
  field.set_type(gp::FieldDescriptorProto::TYPE_STRING);
  field.set_label(gp::FieldDescriptorProto::LABEL_OPTIONAL);
  EXPECT_THAT(Compare().breaking, IsEmpty());
  EXPECT_THAT(Compare().additions, ElementsAre(HasSubstr("SysInfo.sys_location")));
}

TEST_F(Change, ARenumberedEnumerationValueBreaks) {
  Enumeration("information_client.proto", "ProtocolType").mutable_value(4)->set_number(14);
  EXPECT_THAT(Compare().breaking,
              ElementsAre(AllOf(HasSubstr("value STP of zorl2.protobuf.ProtocolType"),
                                HasSubstr("from 4 to 14"), HasSubstr("Give it its number back"))));
}

TEST_F(Change, TwoExchangedEnumerationValuesBreakTwice) {
  gp::EnumDescriptorProto& duplex = Enumeration("interface_entry.proto", "EthernetDuplexMode");
  duplex.mutable_value(1)->set_number(2);
  duplex.mutable_value(2)->set_number(1);
  EXPECT_THAT(Compare().breaking, ElementsAre(HasSubstr("HALF"), HasSubstr("FULL")));
}

TEST_F(Change, ARenamedEnumerationValueBreaks) {
  Enumeration("intf_state.proto", "BlockState").mutable_value(1)->set_name("BLOCK_STATE_DISCARD");
  EXPECT_THAT(Compare().breaking,
              ElementsAre(HasSubstr("BLOCK_STATE_BLOCK"), HasSubstr("BLOCK_STATE_DISCARD")));
}

TEST_F(Change, AnAddedEnumerationValueBreaks) {
  gp::EnumValueDescriptorProto& value =
      *Enumeration("interface_entry.proto", "VlanType").add_value();
  value.set_name("T_VLAN");
  value.set_number(5);
  EXPECT_THAT(Compare().breaking, ElementsAre(HasSubstr("enumerations are closed")));
}

TEST_F(Change, ALostMessageEnumerationOrFileBreaks) {
  File("interface_entry.proto").mutable_enum_type()->RemoveLast();
  File("lag.proto").mutable_message_type()->RemoveLast();
  File("audit_info.proto").set_name("audit.proto");
  EXPECT_THAT(Compare().breaking, ElementsAre(HasSubstr("audit_info.proto is gone"),
                                              HasSubstr("RedundancyGroupFields is gone"),
                                              HasSubstr("IndicationType is gone")));
}

TEST_F(Change, OtherPackingDefaultSyntaxOrPackageBreaks) {
  Message("zorid.proto", "Zorid").mutable_field(0)->mutable_options()->set_packed(false);
  Message("lag.proto", "LagMemberOperationProto").mutable_field(3)->set_default_value("true");
  File("sysinfo.proto").set_syntax("proto3");
  File("virtual_if.proto").set_package("zorl2.wire");
  EXPECT_THAT(Compare().breaking,
              ElementsAre(HasSubstr("syntax"), HasSubstr("zorl2.wire"), HasSubstr("default"),
                          HasSubstr("VirtualInterfaceOperation is gone"), HasSubstr("packed")));
}

}  // namespace
