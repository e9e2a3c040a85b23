#include "tools/model/entry_counts.h"

#include <google/protobuf/descriptor.h>

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Message;

template <typename Counts>
void Count(Counts& counts, int number) {
  ++counts[static_cast<std::size_t>(number)];
}

using Named = std::vector<std::pair<std::string, std::uint64_t>>;

void AddSection(std::vector<CountSection>* sections, const char* title, Named counts) {
  Named seen;
  for (auto& count : counts) {
    if (count.second != 0) seen.push_back(std::move(count));
  }
  if (!seen.empty()) sections->push_back({title, std::move(seen)});
}

template <typename Counts>
void AddSection(std::vector<CountSection>* sections, const char* title,
                const google::protobuf::EnumDescriptor* type, const Counts& counts) {
  Named named;
  for (int i = 0; i < type->value_count(); ++i) {
    const auto place = static_cast<std::size_t>(type->value(i)->number());
    named.emplace_back(type->value(i)->name(), counts[place]);
  }
  AddSection(sections, title, std::move(named));
}

}  // namespace

void EntryCounts::Add(const Message& message) {
  const auto* type = message.GetDescriptor();
  if (type == pb::IntfEntry::descriptor()) {
    Add(static_cast<const pb::IntfEntry&>(message));
  } else if (type == pb::IntfEntryList::descriptor()) {
    const auto& list = static_cast<const pb::IntfEntryList&>(message);
    Add(list.infoclient());
    for (const pb::IntfEntry& entry : list.intfentry()) Add(entry);
  } else if (type == pb::IntfIndication::descriptor()) {
    const auto& indication = static_cast<const pb::IntfIndication&>(message);
    Add(indication.intfentry());
    Count(indications_, indication.indtype());
  } else if (type == pb::InformationClient::descriptor()) {
    Add(static_cast<const pb::InformationClient&>(message));
  } else if (type == pb::ShutStateSync::descriptor()) {
    Add(static_cast<const pb::ShutStateSync&>(message));
  } else if (type == pb::BlockStateSync::descriptor()) {
    Add(static_cast<const pb::BlockStateSync&>(message));
  } else if (type == pb::LagMemberOperationProto::descriptor()) {
    Add(static_cast<const pb::LagMemberOperationProto&>(message));
  } else {
    ++fields_["messages"][type->name()];
    AddFields(message);
  }
}

void EntryCounts::AddFields(const Message& message) {
  const auto& reflection = *message.GetReflection();
  std::vector<const google::protobuf::FieldDescriptor*> fields;
  reflection.ListFields(message, &fields);
  for (const auto* field : fields) {
    const std::string name = message.GetDescriptor()->name() + "." + field->name();
    if (field->cpp_type() == field->CPPTYPE_MESSAGE && field->is_repeated()) {
      for (int i = 0; i < reflection.FieldSize(message, field); ++i) {
        Add(reflection.GetRepeatedMessage(message, field, i));
      }
    } else if (field->cpp_type() == field->CPPTYPE_MESSAGE) {
      if (field->message_type() == pb::Zorid::descriptor()) continue;
      Add(reflection.GetMessage(message, field));
    } else if (field->cpp_type() == field->CPPTYPE_ENUM && !field->is_repeated()) {
      ++fields_[name][reflection.GetEnum(message, field)->name()];
    } else if (field->cpp_type() == field->CPPTYPE_BOOL) {
      ++fields_[name][reflection.GetBool(message, field) ? "true" : "false"];
    }
  }
}

void EntryCounts::Add(const pb::IntfEntry& entry) {
  ++entries_;
  Count(categories_, entry.intfcategory());
  Count(types_, entry.typeinfo().interfacetype());
  Count(vlan_types_, entry.typeinfo().vlantype());
  Count(admin_, entry.statusinfo().adminstatus());
  Count(operational_, entry.statusinfo().operationalstatus());
  Count(link_, entry.statusinfo().linkstatus());
  Count(speeds_, entry.physicalinfo().eth_speed());
  if (entry.shutdownprotos_size() > 0) ++shut_entries_;
  for (int i = 0; i < entry.shutdownprotos_size(); ++i) {
    Count(shutting_, entry.shutdownprotos(i));
  }
  bool blocked = false;
  for (const pb::BlockInfo& info : entry.blockinfo()) {
    const bool blocks = info.state() == pb::BLOCK_STATE_BLOCK;
    Count(blocks ? blocking_ : forwarding_, info.protocol());
    blocked = blocked || blocks;
  }
  if (blocked) ++blocked_entries_;
}

void EntryCounts::Add(const pb::InformationClient& client) {
  ++clients_;
  Count(client_protocols_, client.protocoltype());
}

void EntryCounts::Add(const pb::ShutStateSync& signal) {
  ++signals_;
  Count(signal_protocols_, signal.shutprotocol());
  signalled_ += static_cast<std::uint64_t>(signal.intfs_size());
  for (const pb::ShutStateInfo& info : signal.intfs()) signalled_on_ += info.state() ? 1 : 0;
}

void EntryCounts::Add(const pb::BlockStateSync& signal) {
  ++signals_;
  Count(signal_protocols_, signal.blockprotocol());
  signalled_ += static_cast<std::uint64_t>(signal.intfs_size());
  for (const pb::BlockStateInfo& info : signal.intfs()) {
    signalled_on_ += info.state() == pb::BLOCK_STATE_BLOCK ? 1 : 0;
  }
}

void EntryCounts::Add(const pb::LagMemberOperationProto& operation) {
  ++operations_;
  if (operation.collecting()) ++collecting_;
  if (operation.distributing()) ++distributing_;
}

std::vector<CountSection> EntryCounts::Sections() const {
  std::vector<CountSection> out;
  AddSection(&out, "indications", pb::IndicationType_descriptor(), indications_);
  AddSection(&out, "clients", {{"clients", clients_}});
  AddSection(&out, "protocols of clients", pb::ProtocolType_descriptor(), client_protocols_);
  AddSection(&out, "entries",
             {{"entries", entries_},
              {"shut by a protocol", shut_entries_},
              {"blocked by a protocol", blocked_entries_}});
  AddSection(&out, "entries by category", pb::InterfaceCategory_descriptor(), categories_);
  AddSection(&out, "entries by type", pb::InterfaceType_descriptor(), types_);
  AddSection(&out, "entries by VLAN type", pb::VlanType_descriptor(), vlan_types_);
  AddSection(&out, "entries by speed class", pb::EthernetSpeed_descriptor(), speeds_);
  AddSection(&out, "admin status", pb::AdminStatus_descriptor(), admin_);
  AddSection(&out, "operational status", pb::OperationalStatus_descriptor(), operational_);
  AddSection(&out, "link status", pb::LinkStatus_descriptor(), link_);
  AddSection(&out, "shut down by", pb::ProtocolType_descriptor(), shutting_);
  AddSection(&out, "blocked by", pb::ProtocolType_descriptor(), blocking_);
  AddSection(&out, "forwarding for", pb::ProtocolType_descriptor(), forwarding_);
  AddSection(&out, "signals",
             {{"signals", signals_},
              {"interfaces", signalled_},
              {"interfaces shut or blocked", signalled_on_}});
  AddSection(&out, "protocols of signals", pb::ProtocolType_descriptor(), signal_protocols_);
  AddSection(
      &out, "operations",
      {{"operations", operations_}, {"collecting", collecting_}, {"distributing", distributing_}});
  for (const auto& [title, counts] : fields_)
    out.push_back({title, {counts.begin(), counts.end()}});
  return out;
}

}  // namespace zorl2_inspect
