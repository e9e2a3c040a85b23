#include "tools/views/types_view.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <strings.h>

#include <cstdint>

#include "interface_entry.pb.h"
#include "native/intf_entry.h"
#include "tools/model/field_effects.h"
#include "tools/model/message_types.h"
#include "tools/model/native_enums.h"
#include "tools/model/native_types.h"
#include "tools/text/json_writer.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::EnumDescriptor;
using google::protobuf::EnumValueDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::FileDescriptor;

bool Wanted(const std::string& name, const std::string& type) {
  return name.empty() || strcasecmp(name.c_str(), type.c_str()) == 0 ||
         strcasecmp(name.c_str(), ("zorl2.protobuf." + type).c_str()) == 0;
}

template <typename Visit>
bool EachMessage(const std::string& name, Visit visit) {
  bool found = false;
  for (const Descriptor* type : MessageTypes()) {
    if (!Wanted(name, type->name())) continue;
    found = true;
    visit(*type);
  }
  return found;
}

template <typename Visit>
bool EachEnum(const std::string& name, Visit visit) {
  bool found = false;
  for (const FileDescriptor* file : SchemaFiles()) {
    for (int i = 0; i < file->enum_type_count(); ++i) {
      if (!Wanted(name, file->enum_type(i)->name())) continue;
      found = true;
      visit(*file->enum_type(i));
    }
  }
  return found;
}

std::string TypeName(const FieldDescriptor& field) {
  if (field.message_type() != nullptr) return field.message_type()->name();
  if (field.enum_type() != nullptr) return field.enum_type()->name();
  return field.type_name();
}

const char* LabelName(const FieldDescriptor& field) {
  if (field.is_repeated()) return "repeated";
  return field.is_required() ? "required" : "optional";
}

std::string NativeLine(const Descriptor& type) {
  const std::string record = NativeRecordName(type);
  if (record.empty()) return "no native record";
  const NativeType* native = FindNativeType(type);
  if (native == nullptr) return fmt::format("native record {}, a part", record);
  return fmt::format("native record {}, by {}", record, native->converter);
}

void PrintMessage(const Descriptor& type, const Palette& paint, Output& out) {
  out.Print("\n{}  {}\n", paint(Colour::kBold, type.name()),
            paint(Colour::kFaint, fmt::format("({}; {})", type.file()->name(), NativeLine(type))));
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    const std::string remark = FieldEffects(field);
    out.Print("  {:>3}  {:<8}  {:<20}  {}", field.number(), LabelName(field),
              TypeName(field) + (field.is_packed() ? " packed" : ""),
              remark.empty() ? field.name() : fmt::format("{:<26}", field.name()));
    out.Print("{}\n", remark.empty() ? "" : "  " + paint(Colour::kYellow, remark));
  }
}

void PrintEnum(const EnumDescriptor& type, const Palette& paint, Output& out) {
  const std::string native = NativeEnumName(type);
  out.Print("\n{}  {}\n", paint(Colour::kBold, type.name()),
            paint(Colour::kFaint, fmt::format("({}; native {})", type.file()->name(),
                                              native.empty() ? "enumeration: none" : native)));
  out.Print("  {:>4}  {:>6}  {}\n", "wire", "native", "name");
  for (int i = 0; i < type.value_count(); ++i) {
    const EnumValueDescriptor& value = *type.value(i);
    const auto number = NativeNumber(value);
    const bool differs = number.has_value() && *number != value.number();
    const std::string shown = fmt::format("{:>6}", number ? std::to_string(*number) : "-");
    out.Print("  {:>4}  {}  {}\n", value.number(), differs ? paint(Colour::kYellow, shown) : shown,
              value.name());
  }
}

// The rate of a class in kbit/s, also above the table's limit of 32 bits.
std::uint64_t NominalKbps(int speed_class) {
  static constexpr std::uint64_t kNominal[] = {
      0,          100,        1'000,      10'000,      100'000,       1'000'000,
      10'000'000, 25'000'000, 40'000'000, 100'000'000, 1'000'000'000, 10'000'000'000};
  return kNominal[speed_class];
}

void PrintSpeeds(const Palette& paint, Output& out) {
  out.Print("\n{}  {}\n", paint(Colour::kBold, "speedKbpsTable"),
            paint(Colour::kFaint, "(native/intf_entry.h; kbit/s in 32 bits)"));
  out.Print("  {:>4}  {:>14}  {}\n", "wire", "kbit/s", "name");
  for (const auto& [speed, kbps] : speedKbpsTable) {
    out.Print("  {:>4}  {:>14}  {}", static_cast<int>(speed), kbps,
              pb::EthernetSpeed_Name(static_cast<pb::EthernetSpeed>(speed)));
    const std::uint64_t nominal = NominalKbps(speed);
    if (nominal != kbps) {
      out.Print("  {}",
                paint(Colour::kYellow,
                      fmt::format("wrapped: {} needs more than 32 bits; {} modulo 2^32 is {}",
                                  nominal, nominal, kbps)));
    }
    out.Print("\n");
  }
}

bool WantsSpeeds(const std::string& name) {
  return Wanted(name, "EthernetSpeed") || Wanted(name, "speedKbpsTable");
}

void WriteMessageType(const Descriptor& type, JsonWriter& json) {
  const NativeType* native = FindNativeType(type);
  json.BeginObject();
  json.Member("name", type.name());
  json.Member("file", type.file()->name());
  json.MemberOrNull("native", NativeRecordName(type));
  json.MemberOrNull("converter", native != nullptr ? native->converter : "");
  json.Key("fields");
  json.BeginArray();
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    json.BeginObject();
    json.Member("number", field.number());
    json.Member("label", std::string(LabelName(field)));
    json.Member("type", TypeName(field));
    json.Member("packed", field.is_packed());
    json.Member("name", field.name());
    json.MemberOrNull("remark", FieldEffects(field));
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
}

void WriteEnum(const EnumDescriptor& type, JsonWriter& json) {
  json.BeginObject();
  json.Member("name", type.name());
  json.Member("file", type.file()->name());
  json.MemberOrNull("native", NativeEnumName(type));
  json.Key("values");
  json.BeginArray();
  for (int i = 0; i < type.value_count(); ++i) {
    const auto number = NativeNumber(*type.value(i));
    json.BeginObject();
    json.Member("wire", type.value(i)->number());
    json.Key("native");
    if (number) {
      json.Value(*number);
    } else {
      json.Null();
    }
    json.Member("name", type.value(i)->name());
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
}

void WriteSpeeds(JsonWriter& json) {
  for (const auto& [speed, kbps] : speedKbpsTable) {
    json.BeginObject();
    json.Member("wire", static_cast<int>(speed));
    json.Member("kbps", kbps);
    json.Member("nominal_kbps", NominalKbps(speed));
    json.EndObject();
  }
}

}  // namespace

bool PrintTypes(const std::string& name, const Palette& paint, Output& out) {
  bool found = EachMessage(name, [&](const Descriptor& type) { PrintMessage(type, paint, out); });
  found |= EachEnum(name, [&](const EnumDescriptor& type) { PrintEnum(type, paint, out); });
  const bool speeds = WantsSpeeds(name);
  if (speeds) PrintSpeeds(paint, out);
  return found || speeds;
}

bool PrintTypesAsJson(const std::string& name, Output& out) {
  JsonWriter json(out, JsonWriter::Layout::kIndented);
  json.BeginObject();
  json.Member("schema", "types/1");
  json.Key("messages");
  json.BeginArray();
  bool found = EachMessage(name, [&](const Descriptor& type) { WriteMessageType(type, json); });
  json.EndArray();
  json.Key("enumerations");
  json.BeginArray();
  found |= EachEnum(name, [&](const EnumDescriptor& type) { WriteEnum(type, json); });
  json.EndArray();
  json.Key("speedKbpsTable");
  json.BeginArray();
  const bool speeds = WantsSpeeds(name);
  if (speeds) WriteSpeeds(json);
  json.EndArray();
  json.EndObject();
  return found || speeds;
}

}  // namespace zorl2_inspect
