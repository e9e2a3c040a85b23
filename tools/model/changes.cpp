#include "tools/model/changes.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "interface_entry.pb.h"
#include "tools/model/elements.h"
#include "tools/model/field_text.h"
#include "tools/text/error.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

// Compares identifiers by their numbers, not by their texts.
using Key = std::pair<std::vector<std::uint32_t>, std::size_t>;

struct Element {
  Key key;
  const Message* message;
};

struct Contents {
  // Null if the elements have no identifier; they are then paired by place.
  const FieldDescriptor* identifier = nullptr;
  const Descriptor* type = nullptr;
  std::vector<Element> elements;
  // The message that contains the list of elements; null if there is no list.
  const Message* around = nullptr;
};

const pb::Zorid& IdentifierIn(const Message& element, const Contents& contents) {
  return static_cast<const pb::Zorid&>(
      element.GetReflection()->GetMessage(element, contents.identifier));
}

class Sorter {
 public:
  explicit Sorter(Contents* contents) : contents_(contents) {}

  void Add(const Message& message) {
    Key key;
    if (contents_->identifier != nullptr) {
      const auto& id = IdentifierIn(message, *contents_);
      key.first.assign(id.value().begin(), id.value().end());
      key.second = count_[key.first]++;
    } else {
      key.second = contents_->elements.size();
    }
    contents_->elements.push_back({std::move(key), &message});
  }

  void Finish() {
    std::sort(contents_->elements.begin(), contents_->elements.end(),
              [](const Element& a, const Element& b) { return a.key < b.key; });
  }

 private:
  Contents* contents_;
  std::map<std::vector<std::uint32_t>, std::size_t> count_;
};

Contents Open(const DiffSide& side) {
  Contents contents;
  if (side.records.empty()) return contents;
  const Message& first = *side.records.front();
  const FieldDescriptor* list = ListOf(*first.GetDescriptor());
  const bool spread = list != nullptr && side.records.size() == 1;
  contents.type = spread ? list->message_type() : first.GetDescriptor();
  contents.identifier = IdentifierOf(*contents.type);
  Sorter sorter(&contents);
  if (spread) {
    contents.around = &first;
    const auto& reflection = *first.GetReflection();
    for (int i = 0; i < reflection.FieldSize(first, list); ++i) {
      sorter.Add(reflection.GetRepeatedMessage(first, list, i));
    }
  } else {
    for (const Message* record : side.records) sorter.Add(*record);
  }
  sorter.Finish();
  return contents;
}

std::string KeyText(const Element& element, const Contents& contents) {
  if (contents.identifier == nullptr) {
    return fmt::format("{} {}", contents.type->name(), element.key.second + 1);
  }
  std::string text = DottedText(IdentifierIn(*element.message, contents));
  if (element.key.second > 0) text += fmt::format(" (occurrence {})", element.key.second + 1);
  return text;
}

bool IsSelected(const DiffSide& side, const Element& element) {
  return side.filter == nullptr || side.filter->Selects(*element.message);
}

void CompareAround(const Contents& before, const Contents& after, DiffResult* result) {
  if (before.around == nullptr || after.around == nullptr) return;
  const Descriptor& type = *before.around->GetDescriptor();
  auto fields = CompareFields(*before.around, *after.around, ListOf(type));
  if (fields.empty()) return;
  result->changes.push_back({FieldChange::Kind::kChanged, type.name(), before.around, after.around,
                             std::move(fields), false});
}

}  // namespace

DiffResult Compare(const DiffSide& before, const DiffSide& after) {
  using Kind = FieldChange::Kind;
  DiffResult result;
  const Contents old_contents = Open(before);
  const Contents new_contents = Open(after);
  const Contents& known = old_contents.type != nullptr ? old_contents : new_contents;
  if (old_contents.type != nullptr && new_contents.type != nullptr &&
      old_contents.type != new_contents.type) {
    throw Error(after.name, new_contents.type->name(),
                fmt::format("{} as in {}", old_contents.type->name(), before.name));
  }
  const bool filtered = before.filter != nullptr || after.filter != nullptr;
  if (!filtered) CompareAround(old_contents, new_contents, &result);

  auto old_place = old_contents.elements.begin();
  auto new_place = new_contents.elements.begin();
  while (old_place != old_contents.elements.end() || new_place != new_contents.elements.end()) {
    const bool no_new = new_place == new_contents.elements.end();
    const bool no_old = old_place == old_contents.elements.end();
    const bool removed = no_new || (!no_old && old_place->key < new_place->key);
    const bool added = !removed && (no_old || new_place->key < old_place->key);
    if (filtered && (added || !IsSelected(before, *old_place)) &&
        (removed || !IsSelected(after, *new_place))) {
      if (!added) ++old_place;
      if (!removed) ++new_place;
      continue;
    }
    result.elements_before += added ? 0 : 1;
    result.elements_after += removed ? 0 : 1;
    if (removed) {
      result.changes.push_back(
          {Kind::kRemoved, KeyText(*old_place, known), old_place->message, nullptr, {}});
      ++old_place;
    } else if (added) {
      result.changes.push_back(
          {Kind::kAdded, KeyText(*new_place, known), nullptr, new_place->message, {}});
      ++new_place;
    } else {
      auto fields = CompareFields(*old_place->message, *new_place->message);
      if (fields.empty()) {
        ++result.same;
      } else {
        result.changes.push_back({Kind::kChanged, KeyText(*old_place, known), old_place->message,
                                  new_place->message, std::move(fields)});
      }
      ++old_place;
      ++new_place;
    }
  }
  return result;
}

}  // namespace zorl2_inspect
