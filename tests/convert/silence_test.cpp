// A conversion that returns false writes nothing to standard output or standard error.
#include <gtest/gtest.h>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;
using zorl2_test::FromText;

namespace {

template <typename Convert>
void ExpectSilentFalse(Convert convert) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const bool converted = convert();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_FALSE(converted);
}

template <typename Converter, typename Native, typename Message>
void ExpectRejectedInSilence(const Message& message) {
  ExpectSilentFalse([&] {
    Native native;
    return Converter().Convert(message, native);
  });
}

TEST(Silence, OfEveryConverter) {
  ExpectRejectedInSilence<ZORIDConverter, zorid_t>(FromText<pb::Zorid>("value: [1, 2, 3]"));

  pb::IntfEntry entry = zorl2_test::FullEntryMessage();
  entry.mutable_statusinfo()->clear_operationalspeed();
  ExpectRejectedInSilence<IntfEntryConverter, IntfEntry>(entry);

  pb::ShutStateSync shut;
  shut.set_shutprotocol(pb::STP);
  shut.add_intfs()->set_state(true);
  ExpectRejectedInSilence<ShutStateConverter, ShutStateInfoSyncSignal>(shut);

  pb::BlockStateSync block;
  block.set_blockprotocol(pb::STP);
  block.add_intfs()->mutable_zorid()->add_value(1);
  ExpectRejectedInSilence<BlockStateConverter, BlockStateInfoSyncSignal>(block);

  pb::InformationClient client;
  client.set_token("without an address");
  ExpectRejectedInSilence<ZORL2InfoClientConfigConverter, ZORL2InfoClientConfig>(client);

  ExpectRejectedInSilence<LagMemberConverter, LagMemberOperation>(pb::LagMemberOperationProto());
  ExpectRejectedInSilence<LagMemberConverter, LagMemberOperation>(
      FromText<pb::LagMemberOperationProto>("lag { value: [1, 2, 3, 4] } member { value: [5] }"));
}

template <typename Message, typename Native>
void ExpectPartRejectedInSilence(bool (IntfEntryConvertHelperProtobuf::*convert)(const Message&,
                                                                                 Native&)) {
  ExpectSilentFalse([&] {
    Native native;
    return (IntfEntryConvertHelperProtobuf().*convert)(Message(), native);
  });
}

TEST(Silence, OfEveryPartOfAnEntry) {
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertGeneralInfo);
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertPhysicalInfo);
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertStatusInfo);
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertInterfaceFlags);
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertTypeInfo);
  ExpectPartRejectedInSilence(&IntfEntryConvertHelperProtobuf::ConvertBlockInfo);
}

}  // namespace
