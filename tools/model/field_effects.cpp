#include "tools/model/field_effects.h"

#include <fmt/format.h>
#include <google/protobuf/message.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "check/check.h"
#include "tools/model/any_value.h"
#include "tools/model/check_text.h"
#include "tools/model/message_types.h"
#include "tools/model/native_types.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using zorl2::check::Verdict;
using zorl2::protobuf::Zorid;
using Way = std::vector<const FieldDescriptor*>;

constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();

bool IsZorid(const Descriptor* type) { return type == Zorid::descriptor(); }

void FillIdentifier(Message& message, int values) {
  auto& id = static_cast<Zorid&>(message);
  id.clear_value();
  for (int i = 1; i <= values; ++i) id.add_value(static_cast<std::uint32_t>(i));
}

// One value in each field, so that nothing is missing or lost.
void Fill(Message& message) {
  if (IsZorid(message.GetDescriptor())) return FillIdentifier(message, 4);
  const Reflection& set = *message.GetReflection();
  for (int i = 0; i < message.GetDescriptor()->field_count(); ++i) {
    const FieldDescriptor* field = message.GetDescriptor()->field(i);
    AddAnyValue(message, *field);
    if (field->message_type() == nullptr) continue;
    Fill(field->is_repeated() ? *set.MutableRepeatedMessage(&message, field, 0)
                              : *set.MutableMessage(&message, field));
  }
}

// The fields that lead from the one type to the other.
bool FindWay(const Descriptor& from, const Descriptor& to, Way& way) {
  if (&from == &to) return true;
  for (int i = 0; i < from.field_count(); ++i) {
    const Descriptor* inner = from.field(i)->message_type();
    if (inner == nullptr || IsZorid(inner)) continue;
    way.push_back(from.field(i));
    if (FindWay(*inner, to, way)) return true;
    way.pop_back();
  }
  return false;
}

// A complete message of a type with a native record, and the place of the field in it.
class Probe {
 public:
  Probe(const Descriptor& type, const Way& way)
      : message_(NewMessage(type)), place_(message_.get()) {
    Fill(*message_);
    for (const FieldDescriptor* step : way) {
      const Reflection& get = *place_->GetReflection();
      place_ = step->is_repeated() ? get.MutableRepeatedMessage(place_, step, 0)
                                   : get.MutableMessage(place_, step);
    }
  }

  Message& place() { return *place_; }
  const Reflection& reflection() const { return *place_->GetReflection(); }

  // "value -> after", or why the message is rejected; empty if nothing happens.
  std::string Effect(const std::string& value) const {
    const Verdict verdict = zorl2::check::Check(*message_);
    if (!Converts(verdict)) return RejectionText(verdict);
    const auto losses = zorl2::check::FindLosses(*message_);
    if (losses.empty()) return "";
    return fmt::format("{} -> {}", value, losses.front().after);
  }

 private:
  std::unique_ptr<Message> message_;
  Message* place_;
};

class Effects {
 public:
  Effects(const Descriptor& type, Way way, const FieldDescriptor& field)
      : type_(type), way_(std::move(way)), field_(field) {
    if (field.is_optional()) {
      Try("absent", [&](Probe& probe) { probe.reflection().ClearField(&probe.place(), &field_); });
    }
    if (IsZorid(field.message_type()) && !field.is_repeated()) {
      Try("3 values", [&](Probe& probe) {
        FillIdentifier(*probe.reflection().MutableMessage(&probe.place(), &field_), 3);
      });
    } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_ENUM) {
      for (int i = 0; i < field.enum_type()->value_count(); ++i)
        TryValue(*field.enum_type()->value(i));
    } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_UINT32) {
      Try(fmt::format("{}", kMost), [&](Probe& probe) {
        if (field_.is_repeated()) {
          probe.reflection().SetRepeatedUInt32(&probe.place(), &field_, 3, kMost);
        } else {
          probe.reflection().SetUInt32(&probe.place(), &field_, kMost);
        }
      });
    }
  }

  std::string text;

 private:
  template <typename Change>
  void Try(const std::string& value, const Change& change) {
    Probe probe(type_, way_);
    change(probe);
    const std::string effect = probe.Effect(value);
    if (effect.empty()) return;
    text += (text.empty() ? "" : "; ") + effect;
  }

  void TryValue(const google::protobuf::EnumValueDescriptor& value) {
    Try(value.name(), [&](Probe& probe) {
      if (field_.is_repeated()) {
        probe.reflection().SetRepeatedEnum(&probe.place(), &field_, 0, &value);
      } else {
        probe.reflection().SetEnum(&probe.place(), &field_, &value);
      }
    });
  }

  const Descriptor& type_;
  Way way_;
  const FieldDescriptor& field_;
};

}  // namespace

std::string FieldEffects(const FieldDescriptor& field) {
  for (const Descriptor* type : MessageTypes()) {
    if (FindNativeType(*type) == nullptr) continue;
    // Every message type contains identifiers and converts them in its own way, so only Zorid
    // itself answers for its fields.
    if (IsZorid(type) != IsZorid(field.containing_type())) continue;
    Way way;
    if (FindWay(*type, *field.containing_type(), way)) {
      return Effects(*type, std::move(way), field).text;
    }
  }
  return "";
}

}  // namespace zorl2_inspect
