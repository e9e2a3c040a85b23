#include "tools/model/filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "tools/model/elements.h"
#include "tools/model/field_text.h"

namespace zorl2_inspect {

using google::protobuf::Descriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

Filter::Filter(const Descriptor& record, const std::vector<std::string>& conditions)
    : type_(&record), list_(ListOf(record)) {
  for (const std::string& condition : conditions) {
    conditions_.emplace_back(record, condition);
    has_element_conditions_ = has_element_conditions_ || conditions_.back().of_element();
  }
}

bool Filter::HoldAll(const Message& message, bool of_element) const {
  return std::all_of(conditions_.begin(), conditions_.end(), [&](const Condition& condition) {
    return condition.of_element() != of_element || condition.Holds(message);
  });
}

bool Filter::Selects(const Message& message) const {
  if (message.GetDescriptor() != type_) return HoldAll(message, true);
  if (!HoldAll(message, false)) return false;
  if (!has_element_conditions_) return true;
  const Reflection& reflection = *message.GetReflection();
  for (int i = 0; i < reflection.FieldSize(message, list_); ++i) {
    if (HoldAll(reflection.GetRepeatedMessage(message, list_, i), true)) return true;
  }
  return false;
}

bool Filter::Apply(Message* record) {
  kept_.clear();
  if (empty()) return true;
  const Reflection& reflection = *record->GetReflection();
  const bool holds = HoldAll(*record, false);
  if (list_ == nullptr) {
    ++seen_;
    last_seen_ = 1;
    selected_ += holds ? 1 : 0;
    return holds;
  }
  const int count = reflection.FieldSize(*record, list_);
  seen_ += static_cast<std::uint64_t>(count);
  last_seen_ = static_cast<std::size_t>(count);
  for (int i = 0; i < count && holds; ++i) {
    if (!HoldAll(reflection.GetRepeatedMessage(*record, list_, i), true)) continue;
    const int place = static_cast<int>(kept_.size());
    if (place != i) reflection.SwapElements(record, list_, place, i);
    kept_.push_back(i);
  }
  selected_ += kept_.size();
  for (int i = static_cast<int>(kept_.size()); i < count; ++i) {
    reflection.RemoveLast(record, list_);
  }
  return holds && (!kept_.empty() || !has_element_conditions_);
}

int Filter::IndexBefore(int index) const {
  const auto place = static_cast<std::size_t>(index);
  return place < kept_.size() ? kept_[place] : index;
}

std::string Filter::PathBefore(const std::string& path) const {
  if (list_ == nullptr || kept_.empty()) return path;
  const std::string start = list_->name() + "[";
  if (path.compare(0, start.size(), start) != 0) return path;
  int index = 0;
  const auto parsed = std::from_chars(path.data() + start.size(), path.data() + path.size(), index);
  if (parsed.ec != std::errc()) return path;
  return At(list_->name(), IndexBefore(index)) +
         path.substr(static_cast<std::size_t>(parsed.ptr - path.data()) + 1);
}

}  // namespace zorl2_inspect
