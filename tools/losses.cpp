#include "tools/losses.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "tools/field_text.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

constexpr char kAbsent[] = "(absent)";
constexpr char kNarrowed[] = "narrowed";

class Comparison {
 public:
  void Compare(const Message& before, const Message& after, const std::string& path) {
    if (before.GetDescriptor() == pb::Zorid::descriptor()) {
      CompareIdentifiers(static_cast<const pb::Zorid&>(before),
                         static_cast<const pb::Zorid&>(after), path);
    } else if (before.GetDescriptor() == pb::ShutStateSync::descriptor()) {
      CompareSignals(static_cast<const pb::ShutStateSync&>(before),
                     static_cast<const pb::ShutStateSync&>(after), path);
    } else if (before.GetDescriptor() == pb::BlockStateSync::descriptor()) {
      CompareSignals(static_cast<const pb::BlockStateSync&>(before),
                     static_cast<const pb::BlockStateSync&>(after), path);
    } else {
      for (int i = 0; i < before.GetDescriptor()->field_count(); ++i) {
        CompareField(before, after, *before.GetDescriptor()->field(i), path);
      }
    }
    CompareUnknown(before, after, path);
  }

  std::vector<Loss> losses;

 private:
  void CompareIdentifiers(const pb::Zorid& before, const pb::Zorid& after,
                          const std::string& path) {
    if (std::equal(before.value().begin(), before.value().end(), after.value().begin(),
                   after.value().end())) {
      return;
    }
    losses.push_back({path.empty() ? "value" : path, DottedText(before), DottedText(after),
                      before.value_size() == 4 ? "narrowed to 8 bits each"
                                               : "malformed identifier became zero"});
  }

  // The native record keeps one state for each interface, in ascending order.
  template <typename Signal>
  void CompareSignals(const Signal& before, const Signal& after, const std::string& path) {
    CompareField(before, after, *Signal::descriptor()->FindFieldByNumber(1), path);
    std::map<std::string, int> last;
    std::vector<std::string> ids;
    for (int i = 0; i < before.intfs_size(); ++i) {
      ids.push_back(Octets(before.intfs(i).zorid()));
      last[ids.back()] = i;
    }
    std::map<std::string, int> place;
    for (int i = 0; i < after.intfs_size(); ++i) place[Octets(after.intfs(i).zorid())] = i;
    bool ascending = true;
    const std::string* previous = nullptr;
    for (int i = 0; i < before.intfs_size(); ++i) {
      const std::string& id = ids[static_cast<std::size_t>(i)];
      const std::string at = At(Join(path, "intfs"), i);
      const std::string text = DottedText(before.intfs(i).zorid());
      if (last[id] != i) {
        losses.push_back(
            {at, text, "(dropped)",
             fmt::format("replaced by intfs[{}], a later state of the same interface", last[id])});
        continue;
      }
      if (previous != nullptr && id < *previous) ascending = false;
      previous = &id;
      Compare(before.intfs(i), after.intfs(place[id]), at);
    }
    if (!ascending) {
      losses.push_back({Join(path, "intfs"), "another order", "ascending identifiers",
                        "the record keeps them in ascending order"});
    }
  }

  // What the record keeps of an identifier: the low eight bits of each value.
  static std::string Octets(const pb::Zorid& id) {
    std::string octets;
    for (const std::uint32_t value : id.value()) octets += static_cast<char>(value & 0xff);
    return octets;
  }

  void CompareField(const Message& before, const Message& after, const FieldDescriptor& field,
                    const std::string& path) {
    const Reflection& reflection = *before.GetReflection();
    const std::string name = Join(path, field.name());
    if (field.is_repeated()) {
      const int count =
          std::min(reflection.FieldSize(before, &field), reflection.FieldSize(after, &field));
      for (int i = 0; i < count; ++i) {
        if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
          Compare(reflection.GetRepeatedMessage(before, &field, i),
                  reflection.GetRepeatedMessage(after, &field, i), At(name, i));
        } else {
          CompareValue(before, after, field, i, At(name, i));
        }
      }
      if (reflection.FieldSize(before, &field) != reflection.FieldSize(after, &field)) {
        losses.push_back({name, fmt::format("{} elements", reflection.FieldSize(before, &field)),
                          fmt::format("{} elements", reflection.FieldSize(after, &field)),
                          "elements were dropped or added"});
      }
      return;
    }
    const bool had = reflection.HasField(before, &field);
    const bool has = reflection.HasField(after, &field);
    if (!had && !has) return;
    if (!had) {
      losses.push_back({name, kAbsent, Text(after, field), "absent became present"});
    } else if (!has) {
      losses.push_back({name, Text(before, field), kAbsent, "present became absent"});
    } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
      Compare(reflection.GetMessage(before, &field), reflection.GetMessage(after, &field), name);
    } else {
      CompareValue(before, after, field, -1, name);
    }
  }

  static std::string Text(const Message& message, const FieldDescriptor& field) {
    if (field.cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) return ValueText(message, field, -1);
    const Message& inner = message.GetReflection()->GetMessage(message, &field);
    if (inner.GetDescriptor() != pb::Zorid::descriptor()) return inner.GetDescriptor()->name();
    return DottedText(static_cast<const pb::Zorid&>(inner));
  }

  void CompareValue(const Message& before, const Message& after, const FieldDescriptor& field,
                    int index, const std::string& path) {
    const Reflection& reflection = *before.GetReflection();
    // Whole texts are compared, shortened ones are shown.
    const bool same =
        field.cpp_type() == FieldDescriptor::CPPTYPE_STRING && index < 0
            ? reflection.GetString(before, &field) == reflection.GetString(after, &field)
            : ValueText(before, field, index) == ValueText(after, field, index);
    if (same) return;
    const bool port = field.containing_type() == pb::GeneralInfo::descriptor() &&
                      field.number() == pb::GeneralInfo::kBridgePortNumberFieldNumber;
    losses.push_back({path, ValueText(before, field, index), ValueText(after, field, index),
                      port ? fmt::format("{} to 16 bits", kNarrowed) : "changed"});
  }

  void CompareUnknown(const Message& before, const Message& after, const std::string& path) {
    if (before.GetReflection()->GetUnknownFields(before).empty() ||
        !after.GetReflection()->GetUnknownFields(after).empty()) {
      return;
    }
    for (const UnknownValue& unknown : UnknownValuesHere(before, path)) {
      losses.push_back(
          {unknown.path, fmt::format("{} {}", unknown.wire_type, unknown.value), "(dropped)",
           unknown.known_as.empty() ? std::string("unknown field dropped")
                                    : fmt::format("unknown field dropped; {}", unknown.known_as)});
    }
  }
};

}  // namespace

std::vector<Loss> FindLosses(const Message& before, const Message& after) {
  Comparison comparison;
  comparison.Compare(before, after, "");
  return std::move(comparison.losses);
}

}  // namespace zorl2_inspect
