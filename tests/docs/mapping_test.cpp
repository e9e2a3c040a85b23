// Compares docs/mapping.md with the compiled schema, the native types and the converters.
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <stdexcept>

#include "convert/intf_entry_converter.h"
#include "docs/mapping_page.h"
#include "docs/native_members.h"
#include "docs/round_trips.h"
#include "native/intf_entry_builder.h"

namespace gp = google::protobuf;

namespace {

const std::map<std::string, Section>& Page() {
  static const auto page = ReadMappingPage(ZORL2_SOURCE_DIR "/docs/mapping.md");
  return page;
}

// Every file of the schema, as compiled into the library.
std::vector<const gp::FileDescriptor*> Files() {
  std::ifstream file(ZORL2_BINARY_DIR "/serialize/protobuf/zorl2.desc", std::ios::binary);
  gp::FileDescriptorSet set;
  EXPECT_TRUE(set.ParseFromIstream(&file));
  // The samples mention the library, so that it is loaded and has registered its files.
  EXPECT_FALSE(RoundTrips().empty());
  std::vector<const gp::FileDescriptor*> files;
  for (const gp::FileDescriptorProto& proto : set.file()) {
    files.push_back(gp::DescriptorPool::generated_pool()->FindFileByName(proto.name()));
    EXPECT_NE(files.back(), nullptr) << proto.name();
  }
  return files;
}

std::string TypeName(const gp::FieldDescriptor& field) {
  if (field.message_type() != nullptr) return field.message_type()->name();
  if (field.enum_type() != nullptr) return field.enum_type()->name();
  return field.type_name();
}

std::string LabelledType(const gp::FieldDescriptor& field) {
  const std::string label = field.is_required()   ? "required "
                            : field.is_repeated() ? "repeated "
                                                  : "optional ";
  return label + TypeName(field);
}

std::string FieldName(const gp::FieldDescriptor& field) {
  return field.containing_type()->name() + "." + field.name();
}

// Null when the page does not name the field.
const Row* FindRow(const gp::FieldDescriptor& field) {
  const auto section = Page().find(field.containing_type()->name());
  if (section == Page().end()) return nullptr;
  for (const Row& row : section->second.rows) {
    if (row.count("Field") != 0 && row.at("Field") == field.name()) return &row;
  }
  return nullptr;
}

std::string Cell(const Row& row, const std::string& column) {
  const auto cell = row.find(column);
  return cell == row.end() ? "" : cell->second;
}

std::string ExpectedLine(const gp::FieldDescriptor& field) {
  return "| " + std::to_string(field.number()) + " | `" + field.name() + "` | " +
         LabelledType(field) + " | ... |";
}

TEST(MappingPage, EveryFieldOfTheSchemaHasItsLine) {
  for (const gp::FileDescriptor* file : Files()) {
    for (int m = 0; m < file->message_type_count(); ++m) {
      for (int f = 0; f < file->message_type(m)->field_count(); ++f) {
        const gp::FieldDescriptor& field = *file->message_type(m)->field(f);
        const Row* row = FindRow(field);
        if (row == nullptr) {
          ADD_FAILURE() << "docs/mapping.md says nothing about the field " << FieldName(field)
                        << ". Add this line to its section \"### "
                        << field.containing_type()->name() << "\":\n  " << ExpectedLine(field)
                        << "\nand, when the message has a native record, convert the field in "
                           "convert/ and name its member in tests/docs/native_members.cpp.";
          continue;
        }
        EXPECT_EQ(Cell(*row, "No."), std::to_string(field.number())) << FieldName(field);
        EXPECT_EQ(Cell(*row, "Type"), LabelledType(field)) << FieldName(field);
      }
    }
  }
}

TEST(MappingPage, EveryLineNamesAnExistingFieldOnce) {
  std::map<std::string, const gp::Descriptor*> messages;
  for (const gp::FileDescriptor* file : Files()) {
    for (int m = 0; m < file->message_type_count(); ++m) {
      messages[file->message_type(m)->name()] = file->message_type(m);
    }
  }
  for (const auto& [heading, section] : Page()) {
    std::set<std::string> seen;
    for (const Row& row : section.rows) {
      const std::string name = Cell(row, "Field");
      if (name.empty()) continue;
      EXPECT_TRUE(seen.insert(name).second)
          << "docs/mapping.md has two lines for " << heading << "." << name << ": remove one.";
      ASSERT_EQ(messages.count(heading), 1U) << "docs/mapping.md describes " << heading
                                             << ", which is no message: remove the section.";
      EXPECT_NE(messages[heading]->FindFieldByName(name), nullptr)
          << "docs/mapping.md describes " << heading << "." << name
          << ", which is not in the schema: remove the line.";
    }
  }
}

bool HasNativeRecord(const gp::Descriptor& message) {
  for (const NativeMember& member : NativeMembers()) {
    if (member.field.rfind(message.name() + ".", 0) == 0) return true;
  }
  return false;
}

TEST(MappingPage, NativeMembersAndTypesAreWhatTheCompilerSees) {
  std::map<std::string, NativeMember> members;
  for (const NativeMember& member : NativeMembers()) members[member.field] = member;
  for (const gp::FileDescriptor* file : Files()) {
    for (int m = 0; m < file->message_type_count(); ++m) {
      if (!HasNativeRecord(*file->message_type(m))) continue;
      for (int f = 0; f < file->message_type(m)->field_count(); ++f) {
        const gp::FieldDescriptor& field = *file->message_type(m)->field(f);
        const Row* row = FindRow(field);
        if (row == nullptr) continue;  // EveryFieldOfTheSchemaHasItsLine reports it
        const std::string name = FieldName(field);
        if (members.count(name) == 0) {
          ADD_FAILURE() << name << " has no native member in tests/docs/native_members.cpp: "
                        << "convert the field in convert/ and name its member there.";
          continue;
        }
        EXPECT_EQ(Cell(*row, "Native member"), members[name].member) << name;
        EXPECT_EQ(Cell(*row, "Native type"), members[name].type) << name;
        members.erase(name);
      }
    }
  }
  for (const auto& member : members) {
    ADD_FAILURE() << member.first << " in tests/docs/native_members.cpp has no line in "
                  << "docs/mapping.md, or is no field of the schema";
  }
}

// The message at the end of a path of fields; of a list it is the first element.
gp::Message& At(gp::Message& root, const std::vector<const gp::FieldDescriptor*>& path) {
  gp::Message* message = &root;
  for (const gp::FieldDescriptor* field : path) {
    const gp::Reflection& reflection = *message->GetReflection();
    message = field->is_repeated() ? reflection.MutableRepeatedMessage(message, field, 0)
                                   : reflection.MutableMessage(message, field);
  }
  return *message;
}

std::vector<std::string> Values(const gp::Message& message, const gp::FieldDescriptor& field) {
  std::vector<std::string> values;
  if (!field.is_repeated()) {
    if (!message.GetReflection()->HasField(message, &field)) return {};
    std::string text;
    gp::TextFormat::PrintFieldValueToString(message, &field, -1, &text);
    return {text};
  }
  for (int i = 0; i < message.GetReflection()->FieldSize(message, &field); ++i) {
    std::string text;
    gp::TextFormat::PrintFieldValueToString(message, &field, i, &text);
    values.push_back(text);
  }
  return values;
}

// Values in text form that show what a field can carry.
std::vector<std::string> Probes(const gp::FieldDescriptor& field) {
  switch (field.cpp_type()) {
    case gp::FieldDescriptor::CPPTYPE_BOOL:
      return {"true", "false"};
    case gp::FieldDescriptor::CPPTYPE_UINT32:
      return {"0", "1", "255", "70000", "4294967295"};
    case gp::FieldDescriptor::CPPTYPE_UINT64:
      return {"0", "1", "4294967296", "18446744073709551615"};
    case gp::FieldDescriptor::CPPTYPE_STRING:
      return {"\"\"", "\"ge-0/0/1\"", "\"a\\000b\""};
    case gp::FieldDescriptor::CPPTYPE_ENUM: {
      std::vector<std::string> names;
      for (int i = 0; i < field.enum_type()->value_count(); ++i) {
        names.push_back(field.enum_type()->value(i)->name());
      }
      return names;
    }
    default:
      ADD_FAILURE() << "no probes for the type of " << FieldName(field);
      return {};
  }
}

// "low 16 bits" keeps the low 16 bits of a number, everything else keeps the value.
std::string Kept(const std::string& promise, const std::string& value) {
  if (promise.rfind("low ", 0) != 0) return value;
  const int bits = std::stoi(promise.substr(4));
  return std::to_string(std::stoull(value) & ((1ULL << bits) - 1));
}

class Walk {
 public:
  explicit Walk(const RoundTrip& root) : root_(root) {}

  void Message(const std::vector<const gp::FieldDescriptor*>& path) {
    const gp::Descriptor& type = *At(*root_.sample, path).GetDescriptor();
    for (int i = 0; i < type.field_count(); ++i) {
      const gp::FieldDescriptor& field = *type.field(i);
      const Row* row = FindRow(field);
      if (row == nullptr) continue;  // EveryFieldOfTheSchemaHasItsLine reports it
      SCOPED_TRACE("docs/mapping.md, line of " + FieldName(field));
      Absent(path, field, Cell(*row, "Absent"));
      const std::string promise = Cell(*row, "There and back");
      if (field.message_type() == nullptr) {
        Scalar(path, field, promise);
      } else if (field.message_type()->name() == "Zorid") {
        EXPECT_EQ(promise, "same");
        Carried(path, field, "{ value: 1 value: 200 value: 0 value: 255 }", promise);
      } else {
        EXPECT_EQ(promise.rfind("see ", 0), 0U) << "the parts have lines of their own";
        std::vector<const gp::FieldDescriptor*> inner = path;
        inner.push_back(&field);
        Message(inner);
      }
    }
  }

 private:
  using Path = std::vector<const gp::FieldDescriptor*>;

  std::unique_ptr<gp::Message> Copy() const {
    std::unique_ptr<gp::Message> copy(root_.sample->New());
    copy->CopyFrom(*root_.sample);
    return copy;
  }

  void Absent(const Path& path, const gp::FieldDescriptor& field, const std::string& promise) {
    const std::unique_ptr<gp::Message> in = Copy();
    gp::Message& holder = At(*in, path);
    holder.GetReflection()->ClearField(&holder, &field);
    const std::unique_ptr<gp::Message> out(in->New());
    const bool accepted = root_.run(*in, *out);
    EXPECT_EQ(accepted, promise != "rejected") << "Absent: " << promise;
    if (!accepted) return;
    std::vector<std::string> expected;
    if (promise == "0 0 0 0") {
      expected = {"value: 0\nvalue: 0\nvalue: 0\nvalue: 0\n"};
    } else if (promise != "empty") {
      expected = {promise};
    }
    EXPECT_EQ(Values(At(*out, path), field), expected) << "Absent: " << promise;
  }

  void Scalar(const Path& path, const gp::FieldDescriptor& field, const std::string& promise) {
    static const std::string rejection = "same, but throws for ";
    const bool rejects = promise.rfind(rejection, 0) == 0;
    const std::string rejected = rejects ? ", " + promise.substr(rejection.size()) + "," : "";
    EXPECT_TRUE(rejects || promise == "same" || promise.rfind("low ", 0) == 0) << promise;
    for (const std::string& value : Probes(field)) {
      SCOPED_TRACE("value " + value);
      if (rejected.find(", " + value + ",") != std::string::npos) {
        EXPECT_THROW(Carried(path, field, value, promise), std::out_of_range);
      } else {
        EXPECT_NO_THROW(Carried(path, field, value, promise));
      }
    }
  }

  // Sets the field to the value (a list to four of them) and checks it after the round trip.
  void Carried(const Path& path, const gp::FieldDescriptor& field, const std::string& value,
               const std::string& promise) {
    const std::unique_ptr<gp::Message> in = Copy();
    gp::Message& holder = At(*in, path);
    holder.GetReflection()->ClearField(&holder, &field);
    const int count = field.is_repeated() ? 4 : 1;
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += field.name() + (field.message_type() == nullptr ? ": " : " ") + value + "\n";
    }
    ASSERT_TRUE(gp::TextFormat::MergeFromString(text, &holder)) << text;
    std::vector<std::string> expected = Values(holder, field);
    for (std::string& element : expected) element = Kept(promise, element);
    const std::unique_ptr<gp::Message> out(in->New());
    ASSERT_TRUE(root_.run(*in, *out));
    EXPECT_EQ(Values(At(*out, path), field), expected) << "There and back: " << promise;
  }

  const RoundTrip& root_;
};

TEST(MappingPage, ThereAndBackAndAbsentMatchTheConverters) {
  for (const RoundTrip& root : RoundTrips()) {
    SCOPED_TRACE(root.sample->GetTypeName());
    Walk(root).Message({});
  }
}

int Bits(const std::string& type) {
  const std::size_t digits = type.find_first_of("0123456789");
  return type.rfind("uint", 0) == 0 && digits == 4 ? std::stoi(type.substr(4)) : 0;
}

TEST(MappingPage, NativeToMessageNamesEveryNumberThatIsWiderNatively) {
  int narrowed = 0;
  for (const auto& [heading, section] : Page()) {
    for (const Row& row : section.rows) {
      if (row.count("Native to message") == 0) continue;
      const std::string type = Cell(row, "Type");
      const int message = Bits(type.substr(type.find(' ') + 1));
      const int native = Bits(Cell(row, "Native type"));
      const bool number = message != 0 && native != 0;
      if (number && native > message) {
        ++narrowed;
        EXPECT_EQ(Cell(row, "Native to message"), "low " + std::to_string(message) + " bits")
            << heading;
      } else if (number) {
        EXPECT_EQ(Cell(row, "Native to message"), "same") << heading << "." << Cell(row, "Field");
      } else {
        EXPECT_EQ(Cell(row, "Native to message"), Cell(row, "There and back"))
            << heading << "." << Cell(row, "Field");
      }
    }
  }
  // Only the MTU is wider natively.
  EXPECT_EQ(narrowed, 1);
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = 4294968796;
  zorl2::protobuf::IntfEntry message;
  IntfEntryConverter().Convert(IntfEntryBuilder().addPhysicalInfo(physical).Build(), message);
  EXPECT_EQ(message.physicalinfo().intf_mtu(), 1500U);
}

TEST(MappingPage, EveryEnumerationValueHasItsNumbers) {
  std::map<std::string, EnumRoundTrip> translations;
  for (const EnumRoundTrip& translation : EnumRoundTrips()) {
    translations[translation.name] = translation;
  }
  for (const gp::FileDescriptor* file : Files()) {
    for (int e = 0; e < file->enum_type_count(); ++e) {
      const gp::EnumDescriptor& type = *file->enum_type(e);
      const auto section = Page().find(type.name());
      ASSERT_TRUE(section != Page().end())
          << "docs/mapping.md has no section \"### " << type.name() << "\": add it.";
      std::map<std::string, Row> rows;
      for (const Row& row : section->second.rows) rows[Cell(row, "Value")] = row;
      EXPECT_EQ(rows.size(), section->second.rows.size())
          << "a value of " << type.name() << " twice";
      for (int v = 0; v < type.value_count(); ++v) {
        const gp::EnumValueDescriptor& value = *type.value(v);
        const std::string name = type.name() + " " + value.name();
        if (rows.count(value.name()) == 0) {
          ADD_FAILURE() << "docs/mapping.md says nothing about the value " << name
                        << ": add its line with the number " << value.number();
          continue;
        }
        const Row row = rows[value.name()];
        rows.erase(value.name());
        EXPECT_EQ(Cell(row, "Message"), std::to_string(value.number())) << name;
        if (translations.count(type.name()) == 0) {
          EXPECT_EQ(row.count("Native"), 0U) << type.name() << " has no native counterpart";
          continue;
        }
        const int native = translations[type.name()].to_native(value.number());
        EXPECT_EQ(Cell(row, "Native"), std::to_string(native)) << name;
        EXPECT_EQ(translations[type.name()].to_message(native), value.number()) << name;
      }
      for (const auto& row : rows) {
        ADD_FAILURE() << "docs/mapping.md has a line for " << type.name() << " " << row.first
                      << ", which is not in the schema: remove it.";
      }
    }
  }
}

// "throws" and the text of the exception, or the name of the resulting value.
std::string Outcome(const std::function<int(int)>& translate, int number,
                    const std::function<std::string(int)>& name) {
  try {
    return name(translate(number));
  } catch (const std::out_of_range& error) {
    return std::string("throws ") + error.what();
  }
}

TEST(MappingPage, UnlistedEnumerationValuesBecomeWhatThePageSays) {
  std::map<std::string, Row> rows;
  for (const Row& row : Page().at("Enumerations").rows) rows[Cell(row, "Enumeration")] = row;
  EXPECT_EQ(rows.size(), EnumRoundTrips().size());
  for (const EnumRoundTrip& translation : EnumRoundTrips()) {
    ASSERT_EQ(rows.count(translation.name), 1U)
        << "docs/mapping.md, Enumerations: add a line for " << translation.name;
    const Row& row = rows[translation.name];
    const gp::EnumDescriptor& type = *gp::DescriptorPool::generated_pool()->FindEnumTypeByName(
        "zorl2.protobuf." + translation.name);
    const auto message_name = [&type](int number) {
      return type.FindValueByNumber(number)->name();
    };
    // Finds the name through the message number, because native numbers may differ.
    const auto native_name = [&](int number) {
      return message_name(translation.to_message(number));
    };
    for (const int unlisted : {type.value_count(), type.value_count() + 1000, -1}) {
      EXPECT_EQ(Outcome(translation.to_native, unlisted, native_name),
                Cell(row, "Unlisted, message to native"))
          << translation.name << " " << unlisted;
      EXPECT_EQ(Outcome(translation.to_message, unlisted, message_name),
                Cell(row, "Unlisted, native to message"))
          << translation.name << " " << unlisted;
    }
  }
}

}  // namespace
