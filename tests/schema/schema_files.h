// The files and messages of the schema, as compiled into the library.
#pragma once

#include <google/protobuf/descriptor.h>

#include <string>
#include <vector>

#include "audit_info.pb.h"
#include "interface_entry.pb.h"
#include "l2_sub_if.pb.h"
#include "lag.pb.h"
#include "sysinfo.pb.h"
#include "virtual_if.pb.h"

namespace zorl2_test {

inline std::vector<const google::protobuf::FileDescriptor*> SchemaFiles() {
  namespace pb = zorl2::protobuf;
  return {pb::Zorid::descriptor()->file(),
          pb::InformationClient::descriptor()->file(),
          pb::IntfEntry::descriptor()->file(),
          pb::ShutStateSync::descriptor()->file(),
          pb::LagLoadBalance::descriptor()->file(),
          pb::L2SubinterfaceOperation::descriptor()->file(),
          pb::VirtualInterfaceOperation::descriptor()->file(),
          pb::SysInfo::descriptor()->file(),
          pb::AuditInfo::descriptor()->file()};
}

inline std::vector<const google::protobuf::Descriptor*> SchemaMessages() {
  std::vector<const google::protobuf::Descriptor*> messages;
  for (const google::protobuf::FileDescriptor* file : SchemaFiles()) {
    for (int i = 0; i < file->message_type_count(); ++i) {
      messages.push_back(file->message_type(i));
    }
  }
  return messages;
}

}  // namespace zorl2_test
