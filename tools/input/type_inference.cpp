#include "tools/input/type_inference.h"

#include <fmt/format.h>
#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <algorithm>
#include <memory>
#include <tuple>

#include "tools/model/message_types.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

// How well a type fits.
struct Fit {
  bool broken = false;   // the bytes do not parse to their end
  int unknown = 0;       // fields that the type does not have
  int implausible = 0;   // identifiers of another size, text that is no text
  int missing = 0;       // required fields
  int known = 0;         // fields that the type has
  bool partial = false;  // a list has more elements than were looked at

  bool flawless() const { return !broken && unknown + implausible + missing == 0; }

  // A whole message without a flaw is the best. For the others, known fields raise the rank and
  // flaws lower it.
  std::tuple<bool, int> Key() const {
    if (flawless()) return {true, 0};
    return {false, known - 2 * (unknown + implausible) - missing - (broken ? 3 : 0)};
  }
};

// More would not change the result.
constexpr int kMostElements = 64;

bool IsPlausibleText(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 && byte != '\n' && byte != '\t' && byte != '\r';
  });
}

void Weigh(const Message& message, Fit& fit) {
  const Reflection& reflection = *message.GetReflection();
  fit.unknown += reflection.GetUnknownFields(message).field_count();
  if (message.GetDescriptor() == zorl2::protobuf::Zorid::descriptor()) {
    const auto& id = static_cast<const zorl2::protobuf::Zorid&>(message);
    const int seen = std::min(id.value_size(), kMostElements);
    bool octets = id.value_size() == 4;
    for (int i = 0; i < seen; ++i) octets = octets && id.value(i) <= 255;
    if (!octets) ++fit.implausible;
  }
  std::vector<const FieldDescriptor*> fields;
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    ++fit.known;
    const int count =
        field->is_repeated() ? std::min(reflection.FieldSize(message, field), kMostElements) : 1;
    if (field->is_repeated() && count < reflection.FieldSize(message, field)) fit.partial = true;
    if (field->cpp_type() == FieldDescriptor::CPPTYPE_STRING) {
      if (!IsPlausibleText(reflection.GetString(message, field))) ++fit.implausible;
    } else if (field->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
      for (int i = 0; i < count; ++i) {
        Weigh(field->is_repeated() ? reflection.GetRepeatedMessage(message, field, i)
                                   : reflection.GetMessage(message, field),
              fit);
      }
    }
  }
}

Fit FitOf(std::string_view bytes, const Descriptor& type) {
  const std::unique_ptr<Message> message = NewMessage(type);
  Fit fit;
  fit.broken = !message->ParsePartialFromArray(bytes.data(), static_cast<int>(bytes.size()));
  Weigh(*message, fit);
  std::vector<std::string> missing;
  message->FindInitializationErrors(&missing);
  fit.missing = static_cast<int>(missing.size());
  return fit;
}

std::string LookedAt(const Fit& fit) {
  return fmt::format("{} fields looked at{}", fit.known,
                     fit.partial ? fmt::format(", {} elements of each list", kMostElements) : "");
}

}  // namespace

bool IsFlawless(std::string_view bytes, const Descriptor& type) {
  return FitOf(bytes, type).flawless();
}

InferredType AmbiguousType(const std::vector<const Descriptor*>& types) {
  std::string names;
  for (const Descriptor* type : types) names += (names.empty() ? "" : ", ") + type->name();
  return {nullptr, fmt::format("it reads equally well as {}", names), false, 0};
}

InferredType InferTypeFromWire(std::string_view bytes) {
  if (bytes.empty()) {
    return {nullptr, "an empty message may be of any type", false, 0};
  }
  std::vector<const Descriptor*> best;
  Fit best_fit;
  for (const Descriptor* type : MessageTypes()) {
    const Fit fit = FitOf(bytes, *type);
    if (fit.known == 0) continue;
    if (!best.empty() && fit.Key() < best_fit.Key()) continue;
    if (best.empty() || best_fit.Key() < fit.Key()) {
      best.clear();
      best_fit = fit;
    }
    best.push_back(type);
  }
  if (best.empty() || best_fit.known < best_fit.unknown) {
    return {nullptr, "bytes that fit no message type", false, 0};
  }
  if (best.size() > 1) {
    InferredType ambiguous = AmbiguousType(best);
    ambiguous.flawless = best_fit.flawless();
    return ambiguous;
  }
  if (best_fit.broken) {
    return {best.front(),
            fmt::format("the bytes before the damage fit it best ({})", LookedAt(best_fit)), false,
            0};
  }
  if (best_fit.unknown + best_fit.implausible > 0 || best_fit.missing > 0) {
    return {best.front(),
            fmt::format("it fits best: {} fields unknown, {} required ones missing ({})",
                        best_fit.unknown, best_fit.missing, LookedAt(best_fit)),
            false, 0};
  }
  return {best.front(), fmt::format("only this type has all fields ({})", LookedAt(best_fit)), true,
          best_fit.known};
}

}  // namespace zorl2_inspect
