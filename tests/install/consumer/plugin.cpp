#include "plugin.h"

#include "convert/intf_entry_converter.h"
#include "native/intf_entry_builder.h"

bool EncodeName(const std::string& name, std::string& bytes) {
  IntfEntry::GeneralInfo general;
  general.intf_name = name;
  zorl2::protobuf::IntfEntry message;
  return IntfEntryConverter().Convert(IntfEntryBuilder().addGeneralInfo(general).Build(),
                                      message) &&
         message.SerializeToString(&bytes);
}

bool DecodeName(const std::string& bytes, std::string& name) {
  zorl2::protobuf::IntfEntry message;
  IntfEntry entry;
  if (!message.ParseFromString(bytes) || !IntfEntryConverter().Convert(message, entry)) {
    return false;
  }
  name = entry.getGeneralInfo().intf_name;
  return true;
}
