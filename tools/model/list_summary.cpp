#include "tools/model/list_summary.h"

#include <set>

#include "tools/model/check_text.h"
#include "tools/model/field_text.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::Message;
using zorl2::check::LossKind;

std::size_t Place(int number) { return static_cast<std::size_t>(number); }

}  // namespace

bool HasEntries(const Descriptor& type) {
  return &type == pb::IntfEntry::descriptor() || &type == pb::IntfEntryList::descriptor() ||
         &type == pb::IntfIndication::descriptor();
}

void ListSummary::Add(const Message& message) {
  const Descriptor* type = message.GetDescriptor();
  if (type == pb::IntfEntryList::descriptor()) {
    const auto& list = static_cast<const pb::IntfEntryList&>(message);
    CountLosses(zorl2::check::FindLosses(list.infoclient()));
    for (const pb::IntfEntry& entry : list.intfentry()) Add(entry);
  } else if (type == pb::IntfIndication::descriptor()) {
    const auto& indication = static_cast<const pb::IntfIndication&>(message);
    Add(indication.intfentry());
    if (indication.indtype() == pb::DEL) panel.Remove(indication.intfentry());
  } else {
    Add(static_cast<const pb::IntfEntry&>(message));
    return;
  }
  // Counts only the list's own unknown fields; each entry counts its own.
  const auto& unknown = message.GetReflection()->GetUnknownFields(message);
  lost[Place(static_cast<int>(LossKind::kUnknownField))] +=
      static_cast<std::uint64_t>(unknown.field_count());
}

void ListSummary::Add(const pb::IntfEntry& entry) {
  const std::string& own_name = entry.generalinfo().intf_name();
  const std::string name = own_name.empty() ? DottedText(entry.zorid()) : own_name;
  ++entries;
  if (entry.has_intfcategory()) ++categories[Place(entry.intfcategory())];
  if (entry.typeinfo().has_interfacetype()) ++types[Place(entry.typeinfo().interfacetype())];
  CountStatus(entry, name);
  CountProtocols(entry, name);
  odd.Add(entry, name);
  panel.Add(entry);
  const zorl2::check::Verdict verdict = zorl2::check::Check(entry);
  if (Converts(verdict)) {
    CountLosses(zorl2::check::FindLosses(entry));
    return;
  }
  if (rejected.count == 0) first_rejection = RejectionOf(verdict);
  rejected.Add(name);
}

void ListSummary::CountStatus(const pb::IntfEntry& entry, const std::string& name) {
  const pb::StatusInfo& status = entry.statusinfo();
  if (status.has_adminstatus()) ++admin[Place(status.adminstatus())];
  if (status.has_operationalstatus()) ++operational[Place(status.operationalstatus())];
  if (status.has_linkstatus()) ++link[Place(status.linkstatus())];
  if (status.has_adminstatus() && status.adminstatus() == pb::IF_ADMIN_UP &&
      status.operationalstatus() == pb::DOWN) {
    down_though_enabled.Add(name);
  }
}

void ListSummary::CountProtocols(const pb::IntfEntry& entry, const std::string& name) {
  // Counts a port once for a protocol that is listed twice.
  std::set<int> shutting;
  for (int i = 0; i < entry.shutdownprotos_size(); ++i) shutting.insert(entry.shutdownprotos(i));
  std::set<int> blocking;
  for (const pb::BlockInfo& info : entry.blockinfo()) {
    if (info.state() == pb::BLOCK_STATE_BLOCK) blocking.insert(info.protocol());
  }
  for (const int protocol : shutting) shut_by[Place(protocol)].Add(name);
  for (const int protocol : blocking) blocked_by[Place(protocol)].Add(name);
  shut += shutting.empty() ? 0 : 1;
  blocked += blocking.empty() ? 0 : 1;
}

void ListSummary::CountLosses(const std::vector<zorl2::check::Loss>& losses) {
  for (const zorl2::check::Loss& loss : losses) ++lost[Place(static_cast<int>(loss.kind))];
}

}  // namespace zorl2_inspect
