// Every message of the schema as bytes: known bytes, required fields, closed enumerations, text.
// The messages, fields and values are found by their descriptors, so that an addition to the schema
// is tested without a change here.
#include <gmock/gmock.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>
#include <google/protobuf/text_format.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "interface_entry.pb.h"
#include "lag.pb.h"
#include "tests/schema/schema_files.h"
#include "tests/support/log_capture.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"
#include "tests/support/unknown_fields.h"
#include "tests/support/wire.h"

namespace gp = google::protobuf;
namespace pb = zorl2::protobuf;

using gp::FieldDescriptor;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using zorl2_test::FromText;
using zorl2_test::FromWire;
using zorl2_test::LogCapture;
using zorl2_test::MessageDifference;
using zorl2_test::ToHex;
using zorl2_test::UnknownVarints;
using zorl2_test::WireOf;

namespace {

const std::filesystem::path kKnown = ZORL2_SOURCE_DIR "/tests/testdata/messages";

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path << " is missing";
  return {std::istreambuf_iterator<char>(file), {}};
}

// The tag of a field with a number below 16, as a varint or length-delimited.
char Tag(const FieldDescriptor* field, int wire_type) {
  EXPECT_LT(field->number(), 16);
  return static_cast<char>(field->number() << 3 | wire_type);
}

// By name, which GoogleTest prints.
class EveryMessage : public testing::TestWithParam<std::string> {
 protected:
  using Pointer = std::unique_ptr<gp::Message>;

  static const gp::Descriptor* Type() {
    return gp::DescriptorPool::generated_pool()->FindMessageTypeByName("zorl2.protobuf." +
                                                                       GetParam());
  }

  // An empty message of the type, and one that holds the known text.
  static Pointer Empty() {
    return Pointer(gp::MessageFactory::generated_factory()->GetPrototype(Type())->New());
  }
  static Pointer Known() {
    Pointer message = Empty();
    EXPECT_TRUE(
        gp::TextFormat::ParseFromString(Contents(kKnown / (GetParam() + ".txtpb")), message.get()));
    return message;
  }

  static std::vector<const FieldDescriptor*> Fields(FieldDescriptor::CppType type) {
    std::vector<const FieldDescriptor*> fields;
    for (int i = 0; i < Type()->field_count(); ++i) {
      if (Type()->field(i)->cpp_type() == type) fields.push_back(Type()->field(i));
    }
    return fields;
  }
};

// The bytes were not made by this library.
TEST_P(EveryMessage, TheKnownBytesAreTheKnownText) {
  const std::string bytes = Contents(kKnown / (GetParam() + ".bin"));
  EXPECT_EQ(WireOf(*Known()), ToHex(bytes));
  const Pointer parsed = Empty();
  ASSERT_TRUE(parsed->ParseFromString(bytes));
  EXPECT_EQ(MessageDifference(*Known(), *parsed), "");
}

// A prefix of the bytes either does not parse or is a shorter message.
TEST_P(EveryMessage, ATruncatedMessageIsRejected) {
  const std::string bytes = Contents(kKnown / (GetParam() + ".bin"));
  LogCapture log;
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const Pointer parsed = Empty();
    if (parsed->ParseFromString(bytes.substr(0, length))) {
      EXPECT_EQ(parsed->SerializeAsString(), bytes.substr(0, length));
      EXPECT_LT(parsed->ByteSizeLong(), bytes.size());
    }
  }
}

TEST_P(EveryMessage, WithoutARequiredFieldIsRejectedAndTheLogNamesTheField) {
  LogCapture log;
  for (const auto& path : zorl2_test::RequiredFields(*Known())) {
    SCOPED_TRACE(path.Name());
    const Pointer message = Known();
    zorl2_test::RemoveField(path, *message);
    EXPECT_FALSE(message->IsInitialized());
    const Pointer parsed = Empty();
    EXPECT_FALSE(parsed->ParseFromString(message->SerializePartialAsString()));
    EXPECT_THAT(LogCapture::TakeErrors(), ElementsAre(HasSubstr(path.Name())));
  }
}

TEST_P(EveryMessage, AnUnlistedValueBecomesAnUnknownField) {
  for (const FieldDescriptor* field : Fields(FieldDescriptor::CPPTYPE_ENUM)) {
    SCOPED_TRACE(field->full_name());
    const auto last = static_cast<char>(field->enum_type()->value_count());
    // The first unlisted value, 128, 2^31, and -1 as the ten bytes of a negative number.
    const std::pair<std::string, std::uint64_t> values[] = {
        {std::string(1, last), static_cast<std::uint64_t>(last)},
        {"\x80\x01", 128},
        {"\x80\x80\x80\x80\x08", 0x80000000},
        {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01", 0xFFFFFFFFFFFFFFFF}};
    for (const auto& [varint, value] : values) {
      const std::string bytes = Tag(field, 0) + varint;
      const Pointer message = Empty();
      EXPECT_TRUE(message->ParsePartialFromString(bytes));
      EXPECT_EQ(field->is_repeated() ? message->GetReflection()->FieldSize(*message, field)
                                     : message->GetReflection()->HasField(*message, field),
                0);
      EXPECT_THAT(UnknownVarints(*message), ElementsAre(Pair(field->number(), value)));
      EXPECT_EQ(message->SerializePartialAsString(), bytes);
      EXPECT_TRUE(!field->is_required() || !message->IsInitialized());
    }
  }
}

TEST_P(EveryMessage, EveryListedValueHasItsNumber) {
  for (const FieldDescriptor* field : Fields(FieldDescriptor::CPPTYPE_ENUM)) {
    EXPECT_EQ(field->default_value_enum()->number(), 0) << field->full_name();
    for (int i = 0; i < field->enum_type()->value_count(); ++i) {
      const std::string bytes{Tag(field, 0), static_cast<char>(i)};
      const Pointer message = Empty();
      EXPECT_TRUE(message->ParsePartialFromString(bytes));
      EXPECT_THAT(UnknownVarints(*message), testing::IsEmpty()) << field->full_name() << i;
      EXPECT_EQ(message->SerializePartialAsString(), bytes);
    }
  }
}

TEST_P(EveryMessage, TextThatIsNotUtf8IsKeptAndLoggedOnBothSides) {
  LogCapture log;
  for (const FieldDescriptor* field : Fields(FieldDescriptor::CPPTYPE_STRING)) {
    const auto names_field = ElementsAre(HasSubstr("'" + field->full_name() + "'"));
    const Pointer message = Known();
    message->GetReflection()->SetString(message.get(), field, "caf\xC3\xA9");
    EXPECT_TRUE(message->ParseFromString(message->SerializeAsString()));
    EXPECT_THAT(LogCapture::TakeErrors(), testing::IsEmpty()) << "UTF-8 is not logged";
    message->GetReflection()->SetString(message.get(), field, "\xFF\xFE text");
    const std::string bytes = message->SerializeAsString();
    EXPECT_THAT(LogCapture::TakeErrors(), names_field);
    const Pointer parsed = Empty();
    EXPECT_TRUE(parsed->ParseFromString(bytes));
    EXPECT_THAT(LogCapture::TakeErrors(), names_field);
    EXPECT_EQ(MessageDifference(*message, *parsed), "");
  }
}

std::vector<std::string> MessageNames() {
  std::vector<std::string> names;
  for (const gp::Descriptor* message : zorl2_test::SchemaMessages()) {
    names.push_back(message->name());
  }
  return names;
}
INSTANTIATE_TEST_SUITE_P(Schema, EveryMessage, testing::ValuesIn(MessageNames()),
                         [](const auto& name) { return name.param; });

TEST(Wire, EveryMessageHasKnownBytesAndNoOtherFilesExist) {
  std::set<std::string> expected, found;
  for (const gp::Descriptor* message : zorl2_test::SchemaMessages()) {
    expected.insert({message->name() + ".bin", message->name() + ".txtpb"});
  }
  EXPECT_EQ(expected.size(), 2 * 27U);
  for (const auto& entry : std::filesystem::directory_iterator(kKnown)) {
    found.insert(entry.path().filename());
  }
  EXPECT_EQ(found, expected);
}

TEST(Wire, AMessageOfOptionalFieldsMayBeEmpty) {
  for (const gp::Descriptor* type : zorl2_test::SchemaMessages()) {
    const auto* message = gp::MessageFactory::generated_factory()->GetPrototype(type);
    bool requires_field = false;
    for (int i = 0; i < type->field_count(); ++i) requires_field |= type->field(i)->is_required();
    EXPECT_EQ(message->IsInitialized(), !requires_field) << type->name();
  }
}

TEST(Wire, IdentifiersArePackedAndReadEitherWay) {
  const auto message = FromText<pb::Zorid>("value: [1, 128, 127, 4294967295]");
  EXPECT_EQ(WireOf(message), "0A 09 01 80 01 7F FF FF FF FF 0F");
  for (const char* wire :
       {"0A 04 0A 14 1E 28", "08 0A 08 14 08 1E 08 28", "08 0A 0A 02 14 1E 08 28"}) {
    EXPECT_EQ(WireOf(FromWire<pb::Zorid>(wire)), "0A 04 0A 14 1E 28");
  }
}

TEST(Wire, ShutdownProtocolsAreUnpackedAndReadEitherWay) {
  for (const char* wire : {"38 03 38 0D 38 04", "3A 03 03 0D 04"}) {
    const auto message = FromWire<pb::IntfEntry>(wire);
    EXPECT_THAT(message.shutdownprotos(), ElementsAre(pb::LACP, pb::STP));
    EXPECT_THAT(UnknownVarints(message), ElementsAre(Pair(7, 13)));
    EXPECT_EQ(WireOf(message), "38 03 38 04 38 0D");
  }
}

TEST(Wire, ANegativeNumberHasTenBytes) {
  EXPECT_EQ(WireOf(FromText<pb::LagLoadBalance>("lag: 127 load_balance: -1")),
            "08 7F 10 FF FF FF FF FF FF FF FF FF 01");
}

}  // namespace
