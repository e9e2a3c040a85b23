// The schema of this tree compared with the released one, and the comparison itself with changes
// made by hand.
#include "schema/schema_guard.h"

#include <gmock/gmock.h>
#include <google/protobuf/text_format.h>

#include <fstream>
#include <functional>
#include <ostream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/schema/schema_files.h"
#include "tests/support/message_matchers.h"

namespace gp = google::protobuf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

gp::FileDescriptorSet Released() {
  gp::FileDescriptorSet set;
  EXPECT_TRUE(gp::TextFormat::ParseFromString(
      Contents(ZORL2_SOURCE_DIR "/tests/schema/released_schema.txtpb"), &set));
  return set;
}

// What is installed as zorl2.desc.
gp::FileDescriptorSet Current() {
  gp::FileDescriptorSet set;
  EXPECT_TRUE(set.ParseFromString(Contents(ZORL2_BINARY_DIR "/serialize/protobuf/zorl2.desc")));
  return set;
}

TEST(Schema, NothingBreaksAPeerOfTheReleasedSchema) {
  const SchemaDifferences found = CompareSchemas(Released(), Current());
  EXPECT_THAT(found.breaking, IsEmpty()) << "The wire schema no longer fits what is released:\n"
                                         << SchemaLines(found.breaking) << kAcceptBreak;
}

TEST(Schema, TheReleasedDescriptionHasEveryAddition) {
  const SchemaDifferences found = CompareSchemas(Released(), Current());
  EXPECT_THAT(found.additions, IsEmpty())
      << "These additions affect no peer, but nothing guards them yet:\n"
      << SchemaLines(found.additions) << kAcceptAddition;
}

gp::FileDescriptorProto& File(gp::FileDescriptorSet& set, const std::string& name) {
  for (auto& file : *set.mutable_file()) {
    if (file.name() == name) return file;
  }
  throw std::invalid_argument(name);
}

// This comparison includes file options, services and reserved names, which affect no peer.
TEST(Schema, TheInstalledDescriptorSetIsTheReleasedSchemaAndThatOfTheClasses) {
  gp::FileDescriptorSet current = Current();
  gp::FileDescriptorSet released = Released();
  EXPECT_EQ(static_cast<std::size_t>(current.file_size()), zorl2_test::SchemaFiles().size());
  for (const gp::FileDescriptor* compiled : zorl2_test::SchemaFiles()) {
    gp::FileDescriptorProto expected;
    compiled->CopyTo(&expected);
    compiled->CopyJsonNameTo(&expected);
    const gp::FileDescriptorProto& file = File(current, compiled->name());
    EXPECT_EQ(zorl2_test::MessageDifference(expected, file), "") << compiled->name();
    EXPECT_EQ(zorl2_test::MessageDifference(File(released, compiled->name()), file), "")
        << compiled->name() << ": " << kAcceptAddition;
  }
}

TEST(Schema, TheSourcesNameNoSyntaxAndQualifyEveryTypeFully) {
  const std::regex field("\n\\s*(required|optional|repeated)\\s+(\\S+)");
  const std::regex accepted("bool|u?int32|uint64|string|\\.zorl2\\.protobuf\\.\\w+");
  for (const gp::FileDescriptor* file : zorl2_test::SchemaFiles()) {
    const std::string source = Contents(ZORL2_SOURCE_DIR "/serialize/protobuf/" + file->name());
    EXPECT_FALSE(std::regex_search(source, std::regex("(^|\n)\\s*syntax\\b"))) << file->name();
    for (std::sregex_iterator at(source.begin(), source.end(), field), end; at != end; ++at) {
      EXPECT_TRUE(std::regex_match((*at)[2].str(), accepted)) << file->name() << (*at)[0];
    }
  }
}

// One change of the released schema, and what the guard says about it: for each difference, in
// order, the texts that its sentence contains, separated by "|".
struct Change {
  std::string name;
  std::function<void(gp::FileDescriptorSet&)> make;
  std::vector<std::string> breaking;
  std::vector<std::string> additions = {};

  friend std::ostream& operator<<(std::ostream& out, const Change& c) { return out << c.name; }
};

gp::DescriptorProto& Message(gp::FileDescriptorSet& set, const std::string& file,
                             const std::string& name) {
  for (auto& message : *File(set, file).mutable_message_type()) {
    if (message.name() == name) return message;
  }
  throw std::invalid_argument(name);
}

gp::EnumDescriptorProto& Enumeration(gp::FileDescriptorSet& set, const std::string& file,
                                     const std::string& name) {
  for (auto& enumeration : *File(set, file).mutable_enum_type()) {
    if (enumeration.name() == name) return enumeration;
  }
  throw std::invalid_argument(name);
}

gp::FieldDescriptorProto& Field(gp::FileDescriptorSet& set, const std::string& message, int index) {
  return *Message(set, "interface_entry.proto", message).mutable_field(index);
}

void AddLocation(gp::FileDescriptorSet& set, gp::FieldDescriptorProto::Label label) {
  gp::FieldDescriptorProto& field = *Message(set, "sysinfo.proto", "SysInfo").add_field();
  field.set_name("sys_location");
  field.set_number(4);
  field.set_type(gp::FieldDescriptorProto::TYPE_STRING);
  field.set_label(label);
}

class SchemaGuard : public testing::TestWithParam<Change> {};

void ExpectSentences(const std::vector<std::string>& found,
                     const std::vector<std::string>& expected) {
  ASSERT_EQ(found.size(), expected.size()) << SchemaLines(found);
  for (std::size_t i = 0; i < found.size(); ++i) {
    std::istringstream texts(expected[i]);
    for (std::string text; std::getline(texts, text, '|');) EXPECT_THAT(found[i], HasSubstr(text));
  }
}

TEST_P(SchemaGuard, ReportsTheChange) {
  gp::FileDescriptorSet set = Released();
  GetParam().make(set);
  const SchemaDifferences found = CompareSchemas(Released(), set);
  ExpectSentences(found.breaking, GetParam().breaking);
  ExpectSentences(found.additions, GetParam().additions);
}

std::vector<Change> Changes() {
  using Set = gp::FileDescriptorSet;
  using Proto = gp::FieldDescriptorProto;
  return {
      {"None", [](Set&) {}, {}},
      {"RenumberedField",
       [](Set& set) { Field(set, "PhysicalInfo", 0).set_number(9); },
       {"zorl2.protobuf.PhysicalInfo.intf_mtu|from 1 to 9|Give it its number back"}},
      {"AnotherType",
       [](Set& set) { Field(set, "PhysicalInfo", 0).set_type(Proto::TYPE_UINT64); },
       {"from uint32 to uint64"}},
      {"AnotherEnumerationAsType",
       [](Set& set) { Field(set, "PhysicalInfo", 1).set_type_name(".zorl2.protobuf.VlanType"); },
       {"from .zorl2.protobuf.EthernetSpeed to .zorl2.protobuf.VlanType"}},
      {"AnotherLabel",
       [](Set& set) { Field(set, "GeneralInfo", 2).set_label(Proto::LABEL_REQUIRED); },
       {"bridge_port_number|from optional to required|reject"}},
      {"RenamedField",
       [](Set& set) { Field(set, "GeneralInfo", 0).set_name("name"); },
       {"intf_name|is now called name"}},
      {"RemovedRequiredField",
       [](Set& set) { Message(set, "sysinfo.proto", "SysInfo").mutable_field()->RemoveLast(); },
       {"SysInfo.sys_descr|required|is gone"}},
      {"AddedRequiredField",
       [](Set& set) { AddLocation(set, Proto::LABEL_REQUIRED); },
       {"SysInfo.sys_location|Make the field optional"}},
      {"AddedOptionalField",
       [](Set& set) { AddLocation(set, Proto::LABEL_OPTIONAL); },
       {},
       {"SysInfo.sys_location"}},
      {"RenumberedValue",
       [](Set& set) {
         Enumeration(set, "information_client.proto", "ProtocolType")
             .mutable_value(4)
             ->set_number(14);
       },
       {"value STP of zorl2.protobuf.ProtocolType|from 4 to 14|Give it its number back"}},
      {"ExchangedValues",
       [](Set& set) {
         auto& duplex = Enumeration(set, "interface_entry.proto", "EthernetDuplexMode");
         duplex.mutable_value(1)->set_number(2);
         duplex.mutable_value(2)->set_number(1);
       },
       {"HALF", "FULL"}},
      {"RenamedValue",
       [](Set& set) {
         Enumeration(set, "intf_state.proto", "BlockState")
             .mutable_value(1)
             ->set_name("BLOCK_STATE_DISCARD");
       },
       {"BLOCK_STATE_BLOCK", "BLOCK_STATE_DISCARD"}},
      {"AddedValue",
       [](Set& set) {
         auto& value = *Enumeration(set, "interface_entry.proto", "VlanType").add_value();
         value.set_name("T_VLAN");
         value.set_number(5);
       },
       {"enumerations are closed"}},
      {"RemovedMessageEnumerationAndFile",
       [](Set& set) {
         File(set, "interface_entry.proto").mutable_enum_type()->RemoveLast();
         File(set, "lag.proto").mutable_message_type()->RemoveLast();
         File(set, "audit_info.proto").set_name("audit.proto");
       },
       {"audit_info.proto is gone", "RedundancyGroupFields is gone", "IndicationType is gone"},
       {"audit.proto is new"}},
      {"OtherPackingDefaultSyntaxAndPackage",
       [](Set& set) {
         Message(set, "zorid.proto", "Zorid")
             .mutable_field(0)
             ->mutable_options()
             ->set_packed(false);
         Message(set, "lag.proto", "LagMemberOperationProto")
             .mutable_field(3)
             ->set_default_value("true");
         File(set, "sysinfo.proto").set_syntax("proto3");
         File(set, "virtual_if.proto").set_package("zorl2.wire");
       },
       {"syntax", "zorl2.wire", "default", "VirtualInterfaceOperation is gone", "packed"},
       {"VirtualInterfaceOperation is new"}},
  };
}
INSTANTIATE_TEST_SUITE_P(Changes, SchemaGuard, testing::ValuesIn(Changes()),
                         [](const auto& change) { return change.param.name; });

}  // namespace
