#include "convert/info_client_config_converter.h"

#include "convert/internal/nested_message.h"
#include "convert/internal/protocol_mapping.h"

namespace pb = zorl2::protobuf;

template class Converter<pb::InformationClient, ZORL2InfoClientConfig>;

ZORL2InfoClientConfigConverter::~ZORL2InfoClientConfigConverter() = default;

bool ZORL2InfoClientConfigConverter::Convert(const pb::InformationClient& message,
                                             ZORL2InfoClientConfig& config) {
  if (!message.IsInitialized()) return false;
  config.clientAddress = message.clientaddress();
  config.protocolType = zorl2_mapping::ToNative(message.protocoltype());
  // Adds to the set, which keeps its other elements.
  const pb::IntfCategory& flags = message.intfcategory();
  if (flags.l1()) config.interfaceCategories.insert(L1);
  if (flags.l2()) config.interfaceCategories.insert(L2);
  if (flags.vp()) config.interfaceCategories.insert(VP);
  if (flags.l2_sub_if()) config.interfaceCategories.insert(L2_SUB_IF);
  if (flags.virtual_if()) config.interfaceCategories.insert(VIRTUAL_IF);
  config.token = message.token();
  return true;
}

bool ZORL2InfoClientConfigConverter::Convert(const ZORL2InfoClientConfig& config,
                                             pb::InformationClient& message) {
  message.Clear();
  message.set_clientaddress(config.clientAddress);
  message.set_protocoltype(zorl2_mapping::ToMessage(config.protocolType));
  const auto subscribes = [&config](InterfaceCategory category) {
    return config.interfaceCategories.count(category) != 0;
  };
  pb::IntfCategory& flags = ZORL2_NESTED(message, intfcategory);
  flags.set_l1(subscribes(L1));
  flags.set_l2(subscribes(L2));
  flags.set_vp(subscribes(VP));
  flags.set_l2_sub_if(subscribes(L2_SUB_IF));
  flags.set_virtual_if(subscribes(VIRTUAL_IF));
  message.set_token(config.token);
  return true;
}
