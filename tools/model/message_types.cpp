#include "tools/model/message_types.h"

#include <strings.h>

#include <string>

#include "audit_info.pb.h"
#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "l2_sub_if.pb.h"
#include "lag.pb.h"
#include "sysinfo.pb.h"
#include "virtual_if.pb.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FileDescriptor;

}  // namespace

const std::vector<const FileDescriptor*>& SchemaFiles() {
  static const std::vector<const FileDescriptor*> files = {
      pb::Zorid::descriptor()->file(),
      pb::InformationClient::descriptor()->file(),
      pb::ShutStateSync::descriptor()->file(),
      pb::IntfEntry::descriptor()->file(),
      pb::LagMemberOperationProto::descriptor()->file(),
      pb::L2SubinterfaceOperation::descriptor()->file(),
      pb::VirtualInterfaceOperation::descriptor()->file(),
      pb::SysInfo::descriptor()->file(),
      pb::AuditInfo::descriptor()->file(),
  };
  return files;
}

const std::vector<const Descriptor*>& MessageTypes() {
  static const std::vector<const Descriptor*> types = [] {
    std::vector<const Descriptor*> all;
    for (const FileDescriptor* file : SchemaFiles()) {
      for (int i = 0; i < file->message_type_count(); ++i) all.push_back(file->message_type(i));
    }
    return all;
  }();
  return types;
}

const Descriptor* FindMessageType(std::string_view name) {
  const std::string wanted(name);
  for (const Descriptor* type : MessageTypes()) {
    if (strcasecmp(wanted.c_str(), type->name().c_str()) == 0 ||
        strcasecmp(wanted.c_str(), type->full_name().c_str()) == 0) {
      return type;
    }
  }
  return nullptr;
}

std::unique_ptr<google::protobuf::Message> NewMessage(const Descriptor& type) {
  const google::protobuf::Message* prototype =
      google::protobuf::MessageFactory::generated_factory()->GetPrototype(&type);
  return std::unique_ptr<google::protobuf::Message>(prototype->New());
}

}  // namespace zorl2_inspect
