#include "tools/model/field_name.h"

#include <fmt/format.h>

#include "interface_entry.pb.h"
#include "tools/model/elements.h"
#include "tools/model/field_text.h"
#include "tools/text/error.h"
#include "tools/text/nearest.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

struct ShortName {
  const char* name;
  const char* path;
};

constexpr ShortName kShortNames[] = {
    {"id", "zorid"},
    {"parent", "parent"},
    {"name", "generalInfo.intf_name"},
    {"type", "typeInfo.interfaceType"},
    {"category", "intfCategory"},
    {"admin", "statusInfo.adminStatus"},
    {"oper", "statusInfo.operationalStatus"},
    {"link", "statusInfo.linkStatus"},
    {"speed", "statusInfo.operationalSpeed"},
    {"mtu", "physicalInfo.intf_mtu"},
    {"duplex", "physicalInfo.eth_duplex_mode"},
    {"shut", "shutdownProtos"},
    {"block", "blockInfo.protocol"},
};

// The path of a short name; any other name itself.
std::string LongName(std::string_view name) {
  for (const ShortName& known : kShortNames) {
    if (name == known.name) return known.path;
  }
  return std::string(name);
}

std::optional<FieldPath> FindPath(const Descriptor& type, const std::string& path) {
  try {
    return FieldPath(type, path);
  } catch (const Error&) {
    return std::nullopt;
  }
}

// The field that holds the one entry of a record; null if it has none.
const FieldDescriptor* EntryOf(const Descriptor& type) {
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor* field = type.field(i);
    if (!field->is_repeated() && field->message_type() == pb::IntfEntry::descriptor()) return field;
  }
  return nullptr;
}

// The paths of all values in a message.
void CollectPaths(const Descriptor& type, const std::string& path,
                  std::vector<std::string>* paths) {
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor* field = type.field(i);
    const std::string at = Join(path, field->name());
    const Descriptor* inner = field->message_type();
    if (inner == nullptr || inner == pb::Zorid::descriptor()) {
      paths->push_back(at);
    } else {
      CollectPaths(*inner, at, paths);
    }
  }
}

// The short names of the fields that an element or record of the type has.
std::vector<std::string> ShortNamesIn(const Descriptor& type) {
  std::vector<std::string> names;
  for (const ShortName& known : kShortNames) {
    if (FindPath(type, known.path)) names.emplace_back(known.name);
  }
  return names;
}

}  // namespace

const std::vector<std::string>& ShortNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const ShortName& known : kShortNames) all.emplace_back(known.name);
    return all;
  }();
  return names;
}

FieldName::FieldName(const Descriptor& record, std::string_view name, std::string_view option)
    : text_(name) {
  const FieldDescriptor* const list = ListOf(record);
  const Descriptor& element = list == nullptr ? record : *list->message_type();
  const FieldDescriptor* const entry = EntryOf(record);
  of_element_ = list != nullptr;
  if (Find(element, "")) return;
  // Accepts "intfEntry.zorid" for "zorid".
  const std::string inside = list == nullptr ? "" : list->name() + ".";
  if (!inside.empty() && text_.substr(0, inside.size()) == inside) {
    text_.erase(0, inside.size());
    if (Find(element, "")) return;
    text_ = std::string(name);
  }
  of_element_ = false;
  if (Find(record, "")) return;
  if (entry != nullptr && Find(record, entry->name() + ".")) return;
  const Descriptor& meant = entry == nullptr ? element : *entry->message_type();
  std::vector<std::string> names = ShortNamesIn(meant);
  const std::string short_names = fmt::format("{}", fmt::join(names, ", "));
  CollectPaths(meant, "", &names);
  if (&meant != &record) CollectPaths(record, "", &names);
  std::string expected =
      fmt::format("a field of {}; the nearest is {}", meant.name(), Nearest(name, names));
  if (!short_names.empty()) expected += fmt::format("; short names are {}", short_names);
  throw Error(option, Quoted(name, kShortText), expected);
}

bool FieldName::Find(const Descriptor& type, const std::string& prefix) {
  path_ = FindPath(type, prefix + LongName(text_));
  only_blocking_ = text_ == "block" && path_.has_value();
  return path_.has_value();
}

bool FieldName::is_identifier() const { return field().message_type() == pb::Zorid::descriptor(); }

void FieldName::ForEach(const Message& message, const FieldPath::Visit& visit) const {
  if (!only_blocking_) {
    path_->ForEach(message, visit);
    return;
  }
  path_->ForEach(message, [&](const Message& parent, int index) {
    if (static_cast<const pb::BlockInfo&>(parent).state() == pb::BLOCK_STATE_BLOCK) {
      visit(parent, index);
    }
  });
}

}  // namespace zorl2_inspect
