#include "tools/type_tables.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <strings.h>

#include <cstdint>
#include <iterator>

#include "interface_entry.pb.h"
#include "native/intf_entry.h"
#include "tools/message_types.h"
#include "tools/native_numbers.h"

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

// What the native side makes of a field, where it is not simply the same.
std::string Remark(const FieldDescriptor& field) {
  const std::string& type = field.containing_type()->name();
  const std::string& name = field.name();
  if (type == "Zorid") return "four octets natively: each keeps its low 8 bits";
  if (name == "bridge_port_number") return "16 bits natively; absent becomes 0";
  if (name == "intf_mtu") return "64 bits natively";
  if (type == "IntfEntry" && name == "parent") return "absent becomes 0.0.0.0";
  if (type == "LagMemberOperationProto" && field.message_type() != nullptr) {
    return "must be present and well-formed";
  }
  if (type == "LagMemberOperationProto") {
    return field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL ? "absent becomes false"
                                                             : "absent becomes 0";
  }
  if (type == "ShutStateSync" || type == "BlockStateSync") {
    return field.is_repeated() ? "merged by identifier, the later element wins"
                               : "L1_PROTO and L2_PROTO are refused";
  }
  if (type == "ShutStateInfo" || type == "BlockStateInfo") {
    return field.message_type() != nullptr ? "a malformed one ends the converting process" : "";
  }
  return "";
}

std::string NativeLine(const Descriptor& type) {
  const std::string record = NativeRecordName(type);
  if (record.empty()) return "no native record";
  const std::string converter = ConverterName(type);
  if (converter.empty()) return fmt::format("native record {}, a part", record);
  return fmt::format("native record {}, by {}", record, converter);
}

void PrintMessage(const Descriptor& type, const Palette& paint, std::FILE* out) {
  fmt::print(out, "\n{}  {}\n", paint(Colour::kBold, type.name()),
             paint(Colour::kFaint, fmt::format("({}; {})", type.file()->name(), NativeLine(type))));
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    const std::string remark = Remark(field);
    fmt::print(out, "  {:>3}  {:<8}  {:<20}  {}", field.number(), LabelName(field),
               TypeName(field) + (field.is_packed() ? " packed" : ""),
               remark.empty() ? field.name() : fmt::format("{:<26}", field.name()));
    fmt::print(out, "{}\n", remark.empty() ? "" : "  " + paint(Colour::kYellow, remark));
  }
}

void PrintEnum(const EnumDescriptor& type, const Palette& paint, std::FILE* out) {
  const std::string native = NativeEnumName(type);
  fmt::print(out, "\n{}  {}\n", paint(Colour::kBold, type.name()),
             paint(Colour::kFaint, fmt::format("({}; native {})", type.file()->name(),
                                               native.empty() ? "enumeration: none" : native)));
  fmt::print(out, "  {:>4}  {:>6}  {}\n", "wire", "native", "name");
  for (int i = 0; i < type.value_count(); ++i) {
    const EnumValueDescriptor& value = *type.value(i);
    const auto number = NativeNumber(value);
    const bool differs = number.has_value() && *number != value.number();
    const std::string shown = fmt::format("{:>6}", number ? std::to_string(*number) : "-");
    fmt::print(out, "  {:>4}  {}  {}\n", value.number(),
               differs ? paint(Colour::kYellow, shown) : shown, value.name());
  }
}

// The rate that a class stands for, without the limit of the table's 32 bits.
std::uint64_t NominalKbps(int speed_class) {
  static constexpr std::uint64_t kNominal[] = {
      0,          100,        1'000,      10'000,      100'000,       1'000'000,
      10'000'000, 25'000'000, 40'000'000, 100'000'000, 1'000'000'000, 10'000'000'000};
  return kNominal[speed_class];
}

void PrintSpeeds(const Palette& paint, std::FILE* out) {
  fmt::print(out, "\n{}  {}\n", paint(Colour::kBold, "speedKbpsTable"),
             paint(Colour::kFaint, "(native/intf_entry.h; kbit/s in 32 bits)"));
  fmt::print(out, "  {:>4}  {:>14}  {}\n", "wire", "kbit/s", "name");
  for (const auto& [speed, kbps] : speedKbpsTable) {
    fmt::print(out, "  {:>4}  {:>14}  {}", static_cast<int>(speed), kbps,
               pb::EthernetSpeed_Name(static_cast<pb::EthernetSpeed>(speed)));
    const std::uint64_t nominal = NominalKbps(speed);
    if (nominal != kbps) {
      fmt::print(out, "  {}",
                 paint(Colour::kYellow,
                       fmt::format("wrapped: {} needs more than 32 bits; {} modulo 2^32 is {}",
                                   nominal, nominal, kbps)));
    }
    fmt::print(out, "\n");
  }
}

}  // namespace

bool PrintTypes(const std::string& name, const Palette& paint, std::FILE* out) {
  bool found = EachMessage(name, [&](const Descriptor& type) { PrintMessage(type, paint, out); });
  found |= EachEnum(name, [&](const EnumDescriptor& type) { PrintEnum(type, paint, out); });
  const bool speeds = Wanted(name, "EthernetSpeed") || Wanted(name, "speedKbpsTable");
  if (speeds) PrintSpeeds(paint, out);
  return found || speeds;
}

bool PrintTypesAsJson(const std::string& name, std::FILE* out) {
  // Every name is an identifier, so nothing needs an escape.
  fmt::print(out, "{{\"messages\": [");
  const char* separator = "\n";
  bool found = EachMessage(name, [&](const Descriptor& type) {
    fmt::print(out,
               "{}  {{\"name\": \"{}\", \"file\": \"{}\", \"native\": \"{}\", "
               "\"converter\": \"{}\", \"fields\": [",
               separator, type.name(), type.file()->name(), NativeRecordName(type),
               ConverterName(type));
    for (int i = 0; i < type.field_count(); ++i) {
      const FieldDescriptor& field = *type.field(i);
      fmt::print(out,
                 "{}\n    {{\"number\": {}, \"label\": \"{}\", \"type\": \"{}\", "
                 "\"packed\": {}, \"name\": \"{}\", \"remark\": \"{}\"}}",
                 i == 0 ? "" : ",", field.number(), LabelName(field), TypeName(field),
                 field.is_packed(), field.name(), Remark(field));
    }
    fmt::print(out, "]}}");
    separator = ",\n";
  });
  fmt::print(out, "],\n \"enumerations\": [");
  separator = "\n";
  found |= EachEnum(name, [&](const EnumDescriptor& type) {
    fmt::print(out, "{}  {{\"name\": \"{}\", \"file\": \"{}\", \"native\": \"{}\", \"values\": [",
               separator, type.name(), type.file()->name(), NativeEnumName(type));
    for (int i = 0; i < type.value_count(); ++i) {
      const auto number = NativeNumber(*type.value(i));
      fmt::print(out, "{}\n    {{\"wire\": {}, \"native\": {}, \"name\": \"{}\"}}",
                 i == 0 ? "" : ",", type.value(i)->number(),
                 number ? std::to_string(*number) : "null", type.value(i)->name());
    }
    fmt::print(out, "]}}");
    separator = ",\n";
  });
  fmt::print(out, "],\n \"speedKbpsTable\": [");
  const bool speeds = Wanted(name, "EthernetSpeed") || Wanted(name, "speedKbpsTable");
  separator = "\n";
  for (const auto& [speed, kbps] : speedKbpsTable) {
    if (!speeds) break;
    fmt::print(out, "{}  {{\"wire\": {}, \"kbps\": {}, \"nominal_kbps\": {}}}", separator,
               static_cast<int>(speed), kbps, NominalKbps(speed));
    separator = ",\n";
  }
  fmt::print(out, "]}}\n");
  return found || speeds;
}

}  // namespace zorl2_inspect
