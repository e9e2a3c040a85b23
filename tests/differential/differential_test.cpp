// The library beside the oracle, on generated inputs: the ending, the exception's type and text,
// every member of a record, every byte of a message.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/pvex_fault.h"
#include "tests/reliability/compare.h"
#include "tests/reliability/generate.h"
#include "tests/reliability/part_converters.h"

namespace pb = zorl2::protobuf;

// A conversion that ends the process does so in a child, which reports here what it was told.
static int faultPipe = -1;
static bool traced = false;

void pvex_print_backtrace(void) { traced = true; }

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  dprintf(faultPipe, "%d %d %s %s %d [%s]", traced ? 1 : 0, severity, function, file, line,
          message);
  return 7;
}

namespace {

// Each of the twelve pairs, both directions.
constexpr std::uint64_t kInputsPerDirection = 10000;
constexpr int kFatalSamples = 20;

std::uint64_t Seed() {
  const char* seed = std::getenv("ZORL2_TEST_SEED");
  return seed == nullptr ? 20260101 : std::strtoull(seed, nullptr, 10);
}

// Text that is not UTF-8 is a legal input here; the runtime's remark about it is not wanted.
const bool silenced = [] {
  google::protobuf::SetLogHandler(nullptr);
  return true;
}();

// A field that no schema lists, so that Clear has something more to remove.
template <typename Message>
void AddUnknownField(Message& message) {
  message.GetReflection()->MutableUnknownFields(&message)->AddVarint(1000, 5);
}

template <typename Converter, typename Message, typename Record>
std::string FaultOf(const Message& message, Record record) {
  int ends[2];
  if (pipe(ends) != 0) return "no pipe";
  const pid_t child = fork();
  if (child == 0) {
    faultPipe = ends[1];
    Converter().Convert(message, record);
    _exit(0);
  }
  close(ends[1]);
  char report[500] = {};
  const ssize_t size = read(ends[0], report, sizeof(report) - 1);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (size <= 0 || !WIFEXITED(status)) return "no fault report";
  return std::string(report) + " exit " + std::to_string(WEXITSTATUS(status));
}

std::string ExpectedFault(int line) {
  return "1 1 Convert convert/intf_state_converter.cpp " + std::to_string(line) + " [] exit 1";
}

struct Tally {
  std::uint64_t inputs = 0;
  std::uint64_t endings[5] = {};
  int fatalSamples = 0;
};

// An entry that is updated in place equals one that is converted into a fresh record.
std::string DifferenceToFresh(const pb::IntfEntry& message, const oracle::EntryRecord& before) {
  IntfEntry used = proof::Build(before);
  IntfEntry fresh;
  IntfEntryConverter converter;
  const std::string ending = proof::Ending([&] { return converter.Convert(message, used); });
  if (proof::Ending([&] { return converter.Convert(message, fresh); }) != ending) {
    return "another ending with a fresh record";
  }
  const std::string expected =
      ending == "true" ? proof::Text(fresh) : proof::Text(proof::Build(before));
  return proof::Text(used) == expected ? "" : "used: " + proof::Text(used) + " of: " + expected;
}

// Half of the messages are set field by field, so that an enumeration may hold any number; the
// other half is parsed from bytes that no generated code made.
template <typename Converter, typename Message, typename Model, typename Record>
void MessagesToNatives(Model (proof::Generator::*message)(), Record (proof::Generator::*record)(),
                       int faultLine, Tally& tally) {
  for (std::uint64_t i = 0; i < kInputsPerDirection; ++i, ++tally.inputs) {
    const std::uint64_t seed = Seed() + i * 0x9e3779b97f4a7c15;
    proof::Generator generator(seed);
    Model model = (generator.*message)();
    generator.DrawDamage();
    const Record before = (generator.*record)();
    Message source;
    if (generator.Chance(50)) {
      proof::Fill(model, source);
    } else {
      std::string bytes = proof::Encode(model);
      if (generator.Chance(20)) bytes += "\xc0\x3e\x05";
      ASSERT_TRUE(source.ParsePartialFromString(bytes)) << "seed " << seed;
      model = proof::Read(source);
    }
    oracle::Outcome outcome;
    ASSERT_EQ("", (proof::DifferenceToNative<Converter>(model, source, before, &outcome)))
        << "seed " << seed;
    ++tally.endings[static_cast<int>(outcome)];
    if constexpr (std::is_same_v<Record, oracle::EntryRecord>) {
      ASSERT_EQ("", DifferenceToFresh(source, before)) << "seed " << seed;
    }
    if (outcome == oracle::Outcome::kFatal && tally.fatalSamples < kFatalSamples) {
      ++tally.fatalSamples;
      ASSERT_EQ(ExpectedFault(faultLine), (FaultOf<Converter>(source, proof::Native(before))))
          << "seed " << seed;
    }
  }
}

template <typename Converter, typename Message, typename Model, typename Record>
void NativesToMessages(Model (proof::Generator::*message)(), Record (proof::Generator::*record)(),
                       bool clears, Tally& tally) {
  for (std::uint64_t i = 0; i < kInputsPerDirection; ++i, ++tally.inputs) {
    const std::uint64_t seed = Seed() + i * 0x9e3779b97f4a7c15 + 1;
    proof::Generator generator(seed);
    const Record source = (generator.*record)();
    generator.DrawDamage();
    Message destination;
    Model before;
    if (generator.Chance(70)) {
      before = (generator.*message)();
      proof::Fill(before, destination);
    }
    if (clears) AddUnknownField(destination);
    ASSERT_EQ("", (proof::DifferenceToMessage<Converter>(source, before, destination)))
        << "seed " << seed;
  }
}

template <typename Converter, typename Message, typename Model, typename Record>
Tally Both(Model (proof::Generator::*message)(), Record (proof::Generator::*record)(), bool clears,
           int faultLine = 0) {
  Tally tally;
  MessagesToNatives<Converter, Message>(message, record, faultLine, tally);
  NativesToMessages<Converter, Message>(message, record, clears, tally);
  EXPECT_EQ(tally.inputs, 2 * kInputsPerDirection);
  return tally;
}

std::uint64_t Count(const Tally& tally, oracle::Outcome outcome) {
  return tally.endings[static_cast<int>(outcome)];
}

using proof::Generator;
using Outcome = oracle::Outcome;

TEST(Differential, IdentifiersAgree) {
  const Tally tally =
      Both<ZORIDConverter, pb::Zorid>(&Generator::Zorid, &Generator::NativeZorid, true);
  EXPECT_GT(Count(tally, Outcome::kTrue), 5000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 100U);
}

TEST(Differential, EntriesAgree) {
  const Tally tally =
      Both<IntfEntryConverter, pb::IntfEntry>(&Generator::Entry, &Generator::NativeEntry, true);
  EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 1000U);
  EXPECT_GT(Count(tally, Outcome::kInvalidKey), 300U);
  EXPECT_GT(Count(tally, Outcome::kMapAt), 20U);
}

TEST(Differential, ShutdownSignalsAgree) {
  const Tally tally = Both<ShutStateConverter, pb::ShutStateSync>(
      &Generator::ShutSignal, &Generator::NativeShut, true, oracle::kShutFaultLine);
  EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 500U);
  EXPECT_GT(Count(tally, Outcome::kMapAt), 500U);
  EXPECT_EQ(tally.fatalSamples, kFatalSamples);
}

TEST(Differential, BlockingSignalsAgree) {
  const Tally tally = Both<BlockStateConverter, pb::BlockStateSync>(
      &Generator::BlockSignal, &Generator::NativeBlockSignal, true, oracle::kBlockFaultLine);
  EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 500U);
  EXPECT_GT(Count(tally, Outcome::kMapAt), 500U);
  EXPECT_EQ(tally.fatalSamples, kFatalSamples);
}

TEST(Differential, RegistrationsAgree) {
  const Tally tally = Both<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      &Generator::Client, &Generator::NativeClient, true);
  EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 500U);
}

TEST(Differential, AggregationOperationsAgree) {
  const Tally tally = Both<LagMemberConverter, pb::LagMemberOperationProto>(
      &Generator::Lag, &Generator::NativeLag, true);
  EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
  EXPECT_GT(Count(tally, Outcome::kFalse), 500U);
}

TEST(Differential, PartsOfAnEntryAgree) {
  Both<proof::GeneralConverter, pb::GeneralInfo>(&Generator::General, &Generator::NativeGeneral,
                                                 false);
  Both<proof::FlagsConverter, pb::InterfaceFlags>(&Generator::Flags, &Generator::NativeFlags,
                                                  false);
  Both<proof::BlockConverter, pb::BlockInfo>(&Generator::Block, &Generator::NativeBlock, false);
  for (const Tally& tally : {Both<proof::StatusConverter, pb::StatusInfo>(
                                 &Generator::Status, &Generator::NativeStatus, false),
                             Both<proof::PhysicalConverter, pb::PhysicalInfo>(
                                 &Generator::Physical, &Generator::NativePhysical, false),
                             Both<proof::TypeConverter, pb::TypeInfo>(
                                 &Generator::Type, &Generator::NativeType, false)}) {
    EXPECT_GT(Count(tally, Outcome::kTrue), 3000U);
    EXPECT_GT(Count(tally, Outcome::kFalse), 500U);
    EXPECT_GT(Count(tally, Outcome::kInvalidKey), 300U);
  }
}

}  // namespace
