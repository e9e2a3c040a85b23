#include "tools/model/findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "tools/model/check_text.h"
#include "tools/model/field_text.h"
#include "tools/model/native_types.h"
#include "tools/model/unknown_fields.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;

// If there are more unknown fields, FindLossesBriefly() only counts them.
constexpr std::size_t kMostUnknown = 1000;

}  // namespace

std::vector<Loss> FindLossesBriefly(const Message& message) {
  const std::size_t unknown = CountUnknown(message);
  if (unknown <= kMostUnknown) return zorl2::check::FindLosses(message);
  const std::unique_ptr<Message> known(message.New());
  known->CopyFrom(message);
  known->DiscardUnknownFields();
  std::vector<Loss> losses = zorl2::check::FindLosses(*known);
  const auto place = std::find_if(losses.begin(), losses.end(), [](const Loss& loss) {
    return loss.kind == LossKind::kDefaulted;
  });
  losses.insert(place, {LossKind::kUnknownField, "#...", fmt::format("{} fields", unknown), ""});
  return losses;
}

Findings FindAll(const Message& message) {
  Findings all;
  Verdict whole = zorl2::check::Check(message);
  if (Converts(whole)) {
    all.losses = FindLossesBriefly(message);
    return all;
  }
  bool in_part = false;
  ForEachNative(message, [&](const std::string& path, const NativeType&, const Message& part) {
    Verdict verdict = zorl2::check::Check(part);
    if (!Converts(verdict)) {
      if (!path.empty()) verdict.field = Join(path, verdict.field);
      in_part = in_part || verdict.field == whole.field;
      all.rejections.push_back(std::move(verdict));
      return;
    }
    for (Loss& loss : FindLossesBriefly(part)) {
      loss.field = Join(path, loss.field);
      all.losses.push_back(std::move(loss));
    }
  });
  // The message around the elements may have a reason of its own.
  if (!in_part) all.rejections.insert(all.rejections.begin(), std::move(whole));
  std::stable_sort(all.losses.begin(), all.losses.end(),
                   [](const Loss& a, const Loss& b) { return a.kind < b.kind; });
  return all;
}

}  // namespace zorl2_inspect
