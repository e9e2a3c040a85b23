// Messages of a hostile size or depth: the work grows with the message, and nothing overflows.
#include <gtest/gtest.h>

#include <google/protobuf/unknown_field_set.h>

#include <ctime>

#include "check/check.h"

namespace pb = zorl2::protobuf;

using zorl2::check::Check;
using zorl2::check::FindLosses;
using zorl2::check::LossKind;

namespace {

#ifdef ZORL2_SANITIZED
constexpr int kMany = 20000;
#else
constexpr int kMany = 200000;
#endif

// All elements are for four interfaces, in descending order.
pb::ShutStateSync Duplicates(int count) {
  pb::ShutStateSync signal;
  signal.set_shutprotocol(pb::STP);
  for (int i = 0; i < count; ++i) {
    pb::ShutStateInfo& intf = *signal.add_intfs();
    const auto last = static_cast<std::uint32_t>(3 - i % 4);
    for (const std::uint32_t octet : {0U, 0U, 0U, last}) intf.mutable_zorid()->add_value(octet);
    intf.set_state(true);
  }
  return signal;
}

double SecondsOf(const pb::ShutStateSync& signal) {
  const std::clock_t start = std::clock();
  const std::size_t losses = Check(signal).rule.size() + FindLosses(signal).size();
  EXPECT_EQ(losses, static_cast<std::size_t>(signal.intfs_size()) - 4 + 1);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(HostileMessage, TheTimeForManyDuplicatesIsLinear) {
  const double few = SecondsOf(Duplicates(kMany / 10));
  const double many = SecondsOf(Duplicates(kMany));
  // Linear time takes 10 times as long, quadratic time 100 times.
  EXPECT_LT(many, 40 * few + 0.1) << few << " s for a tenth";
}

TEST(HostileMessage, TheLastOfManyElementsIsFound) {
  pb::ShutStateSync signal = Duplicates(kMany);
  signal.mutable_intfs(kMany - 1)->mutable_zorid()->add_value(5);
  EXPECT_EQ(Check(signal).field, "intfs[" + std::to_string(kMany - 1) + "].zorid");
  signal.mutable_intfs(kMany - 1)->clear_state();
  EXPECT_EQ(Check(signal).field, "intfs[" + std::to_string(kMany - 1) + "].state");
  EXPECT_TRUE(FindLosses(signal).empty());
}

TEST(HostileMessage, ManyMissingFieldsAreOneVerdict) {
  pb::BlockStateSync signal;
  signal.set_blockprotocol(pb::STP);
  for (int i = 0; i < kMany; ++i) signal.add_intfs();
  EXPECT_EQ(Check(signal).field, "intfs[0].zorid");
}

TEST(HostileMessage, AnIdentifierOfManyValuesIsOneLoss) {
  pb::LagMemberOperationProto operation;
  operation.mutable_member();
  for (int i = 0; i < kMany; ++i) operation.mutable_lag()->add_value(0xffffffff);
  EXPECT_EQ(Check(operation).reason, std::to_string(kMany) + " values (expected 4)");
}

TEST(HostileMessage, ManyUnknownFieldsAreAsManyShortLosses) {
  pb::Zorid id;
  for (int i = 0; i < 4; ++i) id.add_value(1);
  for (int i = 0; i < kMany; ++i) id.mutable_unknown_fields()->AddVarint(1 + i % 100 * 5, 1);
  id.mutable_unknown_fields()->AddLengthDelimited(600)->assign(kMany, '\n');
  const auto losses = FindLosses(id);
  ASSERT_EQ(losses.size(), static_cast<std::size_t>(kMany) + 1);
  EXPECT_EQ(losses.front().field, "#1");
  EXPECT_EQ(losses.back().field, "#600");
  EXPECT_LT(losses.back().before.size(), 300U);
}

TEST(HostileMessage, DeepGroupsAreOneLoss) {
  pb::Zorid id;
  for (int i = 0; i < 4; ++i) id.add_value(1);
  google::protobuf::UnknownFieldSet* group = id.mutable_unknown_fields();
  for (int i = 0; i < 1000; ++i) group = group->AddGroup(7);
  const auto losses = FindLosses(id);
  ASSERT_EQ(losses.size(), 1U);
  EXPECT_EQ(losses[0].kind, LossKind::kUnknownField);
  EXPECT_EQ(losses[0].field, "#7");
}

}  // namespace
