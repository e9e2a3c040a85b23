// Compares zorl2::check with the converters on the inputs of the differential generator.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <map>
#include <string>

#include "native/pvex_fault.h"
#include "tests/check/predict.h"
#include "tests/differential/generate.h"

namespace pb = zorl2::protobuf;

// Where a child process reports that its conversion has reached the fault; -1 in any other process.
static int faultPipe = -1;

void pvex_print_backtrace(void) {}

int pvex_gen_fault(int, const char*, const char*, int, const char*) {
  if (faultPipe == -1 || write(faultPipe, "f", 1) != 1) std::abort();
  return 0;
}

namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using proof::Generator;

constexpr std::uint64_t kInputs = 10000;

std::uint64_t Seed(std::uint64_t input) {
  static const std::uint64_t start = [] {
    google::protobuf::SetLogHandler(nullptr);
    const char* seed = std::getenv("ZORL2_TEST_SEED");
    return seed == nullptr ? 20260101 : std::strtoull(seed, nullptr, 10);
  }();
  return start + input * 0x9e3779b97f4a7c15;
}

template <typename Converter, typename Record>
struct EndsInChild {
  template <typename Message>
  bool operator()(const Message& message) const {
    int ends[2];
    if (pipe(ends) != 0) return false;
    const pid_t child = fork();
    if (child == 0) {
      faultPipe = ends[1];
      Record record{};
      Converter().Convert(message, record);
      _exit(0);
    }
    close(ends[1]);
    char report = 0;
    const bool reported = read(ends[0], &report, 1) == 1;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return reported && WIFEXITED(status) && WEXITSTATUS(status) == 1;
  }
};

// Sometimes adds an unknown field of each kind to a message and to its nested messages.
void AddUnknownFields(Message& message, Generator& generator) {
  const auto& reflection = *message.GetReflection();
  if (generator.Chance(5)) {
    auto& unknown = *reflection.MutableUnknownFields(&message);
    const int number = 50 + static_cast<int>(generator.Below(3));
    switch (generator.Below(5)) {
      case 0:
        unknown.AddVarint(number, generator.Below(1000));
        break;
      case 1:
        unknown.AddFixed32(number, 7);
        break;
      case 2:
        unknown.AddFixed64(number, 8);
        break;
      case 3:
        unknown.AddLengthDelimited(number, generator.Text());
        break;
      default:
        unknown.AddGroup(number)->AddGroup(1)->AddVarint(2, 3);
    }
  }
  for (int i = 0; i < message.GetDescriptor()->field_count(); ++i) {
    const FieldDescriptor* field = message.GetDescriptor()->field(i);
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    if (field->is_repeated()) {
      for (int j = 0; j < reflection.FieldSize(message, field); ++j) {
        AddUnknownFields(*reflection.MutableRepeatedMessage(&message, field, j), generator);
      }
    } else if (reflection.HasField(message, field)) {
      AddUnknownFields(*reflection.MutableMessage(&message, field), generator);
    }
  }
}

// Half of the messages are filled by code, so that an enumeration may hold any number; the others
// are parsed, which leaves unlisted values among the unknown fields.
template <typename Message, typename Model>
Message MakeMessage(Generator& generator, Model (Generator::*model)()) {
  Message message;
  const Model drawn = (generator.*model)();
  if (generator.Chance(50)) {
    proof::Fill(drawn, message);
  } else {
    EXPECT_TRUE(message.ParsePartialFromString(proof::Encode(drawn)));
  }
  if (generator.Chance(30)) AddUnknownFields(message, generator);
  return message;
}

using Tally = std::map<std::string, int>;

template <typename Converter, typename Record, typename Message, typename Model>
Tally PredictMessages(Model (Generator::*model)()) {
  Tally tally;
  for (std::uint64_t i = 0; i < kInputs; ++i) {
    Generator generator(Seed(i));
    const auto message = MakeMessage<Message>(generator, model);
    const std::string wrong =
        proof::WrongPrediction<Converter, Record>(message, EndsInChild<Converter, Record>{});
    EXPECT_EQ("", wrong) << "seed " << Seed(i);
    if (!wrong.empty()) break;
    const auto verdict = zorl2::check::Check(message);
    ++tally[std::string(verdict.rule)];
    if (verdict.rule.empty() && !zorl2::check::FindLosses(message).empty()) ++tally["lossy"];
  }
  return tally;
}

template <typename Converter, typename Message, typename Record>
Tally PredictRecords(Record (Generator::*record)()) {
  Tally tally;
  for (std::uint64_t i = 0; i < kInputs; ++i) {
    Generator generator(Seed(i) + 1);
    const auto native = proof::Native((generator.*record)());
    const std::string wrong = proof::WrongPredictionOfRecord<Converter, Message>(native);
    EXPECT_EQ("", wrong) << "seed " << Seed(i) + 1;
    if (!wrong.empty()) break;
    const auto verdict = zorl2::check::Check(native);
    ++tally[std::string(verdict.rule)];
    if (verdict.rule.empty() && !zorl2::check::FindLosses(native).empty()) ++tally["lossy"];
  }
  return tally;
}

TEST(Prediction, Identifiers) {
  Tally tally = PredictMessages<ZORIDConverter, zorid_t, pb::Zorid>(&Generator::Zorid);
  EXPECT_GT(tally["identifier.size"], 100);
  EXPECT_GT(tally["lossy"], 100);
  tally = PredictRecords<ZORIDConverter, pb::Zorid>(&Generator::NativeZorid);
  EXPECT_EQ(tally[""], static_cast<int>(kInputs));
}

TEST(Prediction, Entries) {
  Tally tally = PredictMessages<IntfEntryConverter, IntfEntry, pb::IntfEntry>(&Generator::Entry);
  EXPECT_GT(tally["required"], 1000);
  EXPECT_GT(tally["enum.unlisted"], 300);
  EXPECT_GT(tally["category.unlisted"], 20);
  EXPECT_GT(tally["lossy"], 1000);
  EXPECT_GT(tally[""], tally["lossy"] + 20);
  tally = PredictRecords<IntfEntryConverter, pb::IntfEntry>(&Generator::NativeEntry);
  EXPECT_GT(tally["enum.unlisted"], 300);
  EXPECT_GT(tally["category.unlisted"], 20);
  EXPECT_GT(tally["lossy"], 1000);
  EXPECT_GT(tally[""], tally["lossy"] + 1000);
}

template <typename Converter, typename Record, typename Message>
void PredictSignals(oracle::Signal (Generator::*model)(), Record (Generator::*record)()) {
  Tally tally = PredictMessages<Converter, Record, Message>(model);
  EXPECT_GT(tally["required"], 500);
  EXPECT_GT(tally["protocol.unlisted"], 500);
  EXPECT_GT(tally["identifier.size"], 100);
  EXPECT_GT(tally["lossy"], 1000);
  EXPECT_GT(tally[""], tally["lossy"] + 1000);
  tally = PredictRecords<Converter, Message>(record);
  EXPECT_GT(tally["protocol.unlisted"], 500);
  EXPECT_GT(tally[""], 1000);
}

TEST(Prediction, ShutdownSignals) {
  PredictSignals<ShutStateConverter, ShutStateInfoSyncSignal, pb::ShutStateSync>(
      &Generator::ShutSignal, &Generator::NativeShut);
}

TEST(Prediction, BlockingSignals) {
  PredictSignals<BlockStateConverter, BlockStateInfoSyncSignal, pb::BlockStateSync>(
      &Generator::BlockSignal, &Generator::NativeBlockSignal);
}

TEST(Prediction, Registrations) {
  Tally tally =
      PredictMessages<ZORL2InfoClientConfigConverter, ZORL2InfoClientConfig, pb::InformationClient>(
          &Generator::Client);
  EXPECT_GT(tally["required"], 500);
  EXPECT_GT(tally["lossy"], 100);
  EXPECT_GT(tally[""], tally["lossy"] + 1000);
  tally = PredictRecords<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      &Generator::NativeClient);
  EXPECT_GT(tally["lossy"], 100);
  EXPECT_GT(tally[""], tally["lossy"] + 1000);
}

TEST(Prediction, MemberOperations) {
  Tally tally =
      PredictMessages<LagMemberConverter, LagMemberOperation, pb::LagMemberOperationProto>(
          &Generator::Lag);
  EXPECT_GT(tally["identifier.missing"], 500);
  EXPECT_GT(tally["identifier.size"], 100);
  EXPECT_GT(tally["lossy"], 1000);
  EXPECT_GT(tally[""], tally["lossy"] + 500);
  tally = PredictRecords<LagMemberConverter, pb::LagMemberOperationProto>(&Generator::NativeLag);
  EXPECT_GT(tally["lossy"], 1000);
  EXPECT_GT(tally[""], tally["lossy"] + 20);
}

// The first element that fails decides, and the losses of all elements are in one order.
TEST(Prediction, Lists) {
  int converted = 0;
  int failed = 0;
  for (std::uint64_t i = 0; i < kInputs; ++i) {
    Generator generator(Seed(i));
    pb::IntfEntryList list;
    *list.mutable_infoclient() = MakeMessage<pb::InformationClient>(generator, &Generator::Client);
    for (std::uint64_t n = generator.Below(4); n > 0; --n) {
      if (generator.Chance(50)) generator.DrawDamage();
      *list.add_intfentry() = MakeMessage<pb::IntfEntry>(generator, &Generator::Entry);
    }

    zorl2::check::Verdict expected = zorl2::check::Check(list.infoclient());
    if (!expected.rule.empty()) expected.field = "infoClient." + expected.field;
    std::vector<zorl2::check::Loss> losses;
    const auto append = [&losses](const auto& part, const std::string& path) {
      for (auto& loss : zorl2::check::FindLosses(part)) {
        loss.field = path + loss.field;
        losses.push_back(loss);
      }
    };
    append(list.infoclient(), "infoClient.");
    for (int n = 0; n < list.intfentry_size(); ++n) {
      const std::string path = "intfEntry[" + std::to_string(n) + "].";
      append(list.intfentry(n), path);
      if (!expected.rule.empty()) continue;
      expected = zorl2::check::Check(list.intfentry(n));
      if (!expected.rule.empty()) expected.field = path + expected.field;
    }
    if (!expected.rule.empty()) losses.clear();
    std::stable_sort(losses.begin(), losses.end(),
                     [](const auto& a, const auto& b) { return a.kind < b.kind; });
    ASSERT_EQ(proof::Text(expected), proof::Text(zorl2::check::Check(list))) << "seed " << Seed(i);
    ASSERT_EQ(proof::Text(losses), proof::Text(zorl2::check::FindLosses(list)))
        << "seed " << Seed(i);
    ASSERT_EQ("", proof::WrongDynamic(list)) << "seed " << Seed(i);
    ++(expected.rule.empty() ? converted : failed);
  }
  EXPECT_GT(converted, 1000);
  EXPECT_GT(failed, 1000);
}

}  // namespace
