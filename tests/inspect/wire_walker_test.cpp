// The wire walker, the explained message and the runtime's own parser must agree on any bytes.
#include "tools/wire/wire_walker.h"

#include <gmock/gmock.h>
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "interface_entry.pb.h"
#include "lag.pb.h"
#include "tools/model/check_text.h"
#include "tools/views/explain_view.h"

namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Message;
using zorl2_inspect::Problem;
using zorl2_inspect::WireField;

class Recorder : public zorl2_inspect::WireVisitor {
 public:
  void OnField(const WireField& field) override {
    paths.emplace_back(field.path);
    // Every byte belongs to exactly one field.
    EXPECT_EQ(field.offset, covered);
    covered = field.offset + field.raw.size();
  }
  void OnEnd(const WireField&, std::size_t end) override { EXPECT_EQ(covered, end); }
  void OnError(const Problem& error) override { errors.push_back(error); }

  std::vector<std::string> paths;
  std::vector<Problem> errors;
  std::size_t covered = 0;
};

class Verdict : public zorl2_inspect::WireVisitor {
 public:
  void OnField(const WireField&) override {}
  void OnEnd(const WireField&, std::size_t) override {}
  void OnError(const Problem&) override { ++errors; }
  int errors = 0;
};

std::string Sample() {
  pb::IntfIndication indication;
  indication.set_indcategory(pb::VP);
  indication.set_indtype(pb::UPDATE);
  pb::IntfEntry& entry = *indication.mutable_intfentry();
  for (const std::uint32_t value : {10u, 20u, 300u, 40u}) entry.mutable_zorid()->add_value(value);
  entry.mutable_generalinfo()->set_intf_name("xe-1");
  entry.mutable_generalinfo()->set_bridge_port_number(70000);
  entry.mutable_statusinfo()->set_operationalspeed(4000000000u);
  entry.mutable_typeinfo()->mutable_interfaceflags()->set_l2_bundle(true);
  entry.add_shutdownprotos(pb::CFM);
  entry.add_blockinfo()->set_protocol(pb::EFM);
  return indication.SerializePartialAsString();
}

// A meaningful tag or value, more often than random bytes would contain one.
std::string Piece(std::mt19937& random) {
  static const std::string kPieces[] = {
      "\x0a",         "\x1a",         "\x0b",        "\x0c",     "\x4b",
      "\x4c",         "\x07",         "\x0f",        "\x09",     "\x0d",
      "\xff\xff\x7f", "\xff",         "\x80\x80",    "\xf8\x04", std::string(1, '\0'),
      "\x7f",         "\xc8\x01\x01", "\xfa\x04\x01"};
  return kPieces[random() % std::size(kPieces)];
}

std::string Damage(std::string bytes, std::mt19937& random) {
  const unsigned steps = random() % 2 + 1;
  for (unsigned i = 0; i < steps; ++i) {
    const std::size_t place = bytes.empty() ? 0 : random() % bytes.size();
    switch (random() % 5) {
      case 0:
        bytes.resize(place);
        break;
      case 1:
        bytes.insert(place, Piece(random));
        break;
      case 2:
        if (!bytes.empty()) bytes[place] = static_cast<char>(random());
        break;
      case 3:
        bytes.erase(place, random() % 4);
        break;
      default:
        bytes.insert(place, bytes.substr(place, random() % 12));
    }
  }
  return bytes;
}

template <typename Record>
void CompareVerdicts(const std::string& sample, unsigned seed, int rounds) {
  google::protobuf::SetLogHandler(nullptr);
  std::mt19937 random(seed);
  zorl2_inspect::Output nowhere("/dev/null");
  const auto rows = zorl2_inspect::TextRows({}, nowhere);
  int rejected = 0;
  for (int i = 0; i < rounds; ++i) {
    const std::string bytes = Damage(sample, random);
    Record message;
    const bool parsed = message.ParsePartialFromString(bytes);
    Verdict verdict;
    const bool walked = zorl2_inspect::WalkWire(bytes, *Record::descriptor(), 0, verdict);
    ASSERT_EQ(walked, parsed) << testing::PrintToString(bytes);
    ASSERT_EQ(walked, verdict.errors == 0);
    const auto summary = zorl2_inspect::Explain(bytes, *Record::descriptor(), 0, *rows);
    const auto malformed = static_cast<std::size_t>(zorl2_inspect::Note::Kind::kMalformed);
    ASSERT_EQ(summary.notes[malformed] == 0, parsed);
    ASSERT_EQ(summary.damage.has_value(), !parsed);
    if (parsed) {
      ASSERT_EQ(zorl2_inspect::IsIncomplete(summary.verdict), !message.IsInitialized())
          << testing::PrintToString(bytes);
    }
    rejected += parsed ? 0 : 1;
  }
  EXPECT_GT(rejected, rounds / 10);
  EXPECT_GT(rounds - rejected, rounds / 10);
}

TEST(WireWalker, AgreesWithTheRuntimeOnDamagedIndications) {
  CompareVerdicts<pb::IntfIndication>(Sample(), 1, 10000);
}

TEST(WireWalker, AgreesWithTheRuntimeOnDamagedSignals) {
  pb::ShutStateSync signal;
  signal.set_shutprotocol(pb::LBD);
  for (std::uint32_t i = 1; i < 4; ++i) {
    pb::ShutStateInfo& info = *signal.add_intfs();
    for (std::uint32_t octet = 0; octet < 4; ++octet) info.mutable_zorid()->add_value(octet * i);
    info.set_state(i == 2);
  }
  CompareVerdicts<pb::ShutStateSync>(signal.SerializeAsString(), 2, 10000);
}

TEST(WireWalker, AgreesWithTheRuntimeOnMessagesWithoutRequiredFields) {
  pb::LagMemberOperationProto operation;
  operation.mutable_lag()->add_value(7);
  operation.mutable_member()->add_value(8);
  operation.set_token(1u << 31);
  operation.set_collecting(true);
  CompareVerdicts<pb::LagMemberOperationProto>(operation.SerializeAsString(), 3, 10000);
}

TEST(WireWalker, CoversEveryByteOfAGoodMessage) {
  const std::string bytes = Sample();
  Recorder recorder;
  EXPECT_TRUE(zorl2_inspect::WalkWire(bytes, *pb::IntfIndication::descriptor(), 0, recorder));
  EXPECT_EQ(recorder.covered, bytes.size());
  EXPECT_THAT(recorder.paths,
              testing::IsSupersetOf({"indCategory", "intfEntry", "intfEntry.zorid.value",
                                     "intfEntry.zorid.value[2]", "intfEntry.shutdownProtos[0]",
                                     "intfEntry.typeInfo.interfaceFlags.l2_bundle"}));
}

TEST(WireWalker, AnUnpackedIdentifierHasTheSamePaths) {
  Recorder recorder;
  const std::string bytes("\x08\x01\x0a\x02\x02\x03\x08\x04", 8);
  EXPECT_TRUE(zorl2_inspect::WalkWire(bytes, *pb::Zorid::descriptor(), 0, recorder));
  EXPECT_THAT(recorder.paths,
              testing::ElementsAre("value[0]", "value", "value[1]", "value[2]", "value[3]"));
}

TEST(WireWalker, AnErrorNamesOffsetPathAndWhatWasFound) {
  Recorder recorder;
  // The length of the entry's identifier is three beyond its end.
  const std::string bytes("\x1a\x04\x0a\x05\x0a\x00", 6);
  recorder.covered = 100;
  EXPECT_FALSE(zorl2_inspect::WalkWire(bytes, *pb::IntfIndication::descriptor(), 100, recorder));
  ASSERT_EQ(recorder.errors.size(), 1u);
  EXPECT_EQ(recorder.errors[0].offset.value(), 103u);
  EXPECT_EQ(recorder.errors[0].path, "intfEntry.zorid");
  EXPECT_EQ(recorder.errors[0].expected, "at most 2 more bytes");
  EXPECT_EQ(recorder.errors[0].found, "a length of 5");
}

}  // namespace
