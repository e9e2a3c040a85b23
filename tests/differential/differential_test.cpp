// The library compared with the oracle on generated inputs: the ending, the type and text of the
// exception, every member of a record, every byte of a message. Prints which conditions of
// docs/behaviour.md the inputs met, and how often.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <type_traits>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/pvex_fault.h"
#include "tests/differential/compare.h"
#include "tests/differential/generate.h"
#include "tests/differential/part_converters.h"

namespace pb = zorl2::protobuf;

// Where a child process, in which a conversion terminates, reports the fault.
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

// The number of inputs for each direction of each of the twelve pairs.
constexpr std::uint64_t kInputs = 10000;
// How many inputs run in a child process each.
constexpr int kFatalSamples = 20;

std::uint64_t Seed() {
  const char* seed = std::getenv("ZORL2_TEST_SEED");
  return seed == nullptr ? 20260101 : std::strtoull(seed, nullptr, 10);
}

// Text that is not UTF-8 is a legal input, so the runtime's log of it is suppressed.
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

using proof::Generator;

using Tally = std::map<std::string, int>;

// Half of the messages are set field by field, so that an enumeration may hold any number; the
// other half is parsed from bytes that no generated code made.
template <typename Converter, typename Message, typename Model, typename Record>
Tally MessagesToNatives(Model (Generator::*message)(), Record (Generator::*record)(),
                        int faultLine) {
  Tally tally;
  for (std::uint64_t i = 0; i < kInputs; ++i) {
    const std::uint64_t seed = Seed() + i * 0x9e3779b97f4a7c15;
    Generator generator(seed);
    Model model = (generator.*message)();
    generator.DrawDamage();
    const Record before = (generator.*record)();
    Message source;
    if (generator.Chance(50)) {
      proof::Fill(model, source);
    } else {
      std::string bytes = proof::Encode(model);
      if (generator.Chance(20)) bytes += "\xc0\x3e\x05";
      EXPECT_TRUE(source.ParsePartialFromString(bytes)) << "seed " << seed;
      model = proof::Read(source);
    }
    oracle::Outcome outcome;
    oracle::TakeNotes();
    std::string difference = proof::DifferenceToNative<Converter>(model, source, before, &outcome);
    if constexpr (std::is_same_v<Record, oracle::EntryRecord>) {
      difference += DifferenceToFresh(source, before);
    }
    if (outcome == oracle::Outcome::kFatal && tally[proof::Name(outcome)] < kFatalSamples) {
      EXPECT_EQ(ExpectedFault(faultLine), (FaultOf<Converter>(source, proof::Native(before))))
          << "seed " << seed;
    }
    ++tally[proof::Name(outcome)];
    for (const std::string& condition : oracle::TakeNotes()) ++tally[condition];
    EXPECT_EQ("", difference) << "seed " << seed;
    if (!difference.empty()) break;
  }
  return tally;
}

template <typename Converter, typename Message, typename Model, typename Record>
Tally NativesToMessages(Model (Generator::*message)(), Record (Generator::*record)(), bool clears) {
  Tally tally;
  for (std::uint64_t i = 0; i < kInputs; ++i) {
    const std::uint64_t seed = Seed() + i * 0x9e3779b97f4a7c15 + 1;
    Generator generator(seed);
    const Record source = (generator.*record)();
    generator.DrawDamage();
    Message destination;
    Model before;
    if (generator.Chance(70)) {
      before = (generator.*message)();
      proof::Fill(before, destination);
    }
    if (clears) AddUnknownField(destination);
    Model expected = before;
    oracle::TakeNotes();
    ++tally[proof::Name(oracle::ToMessage(source, expected))];
    for (const std::string& condition : oracle::TakeNotes()) ++tally[condition];
    const std::string difference =
        proof::DifferenceToMessage<Converter>(source, before, destination);
    EXPECT_EQ("", difference) << "seed " << seed;
    if (!difference.empty()) break;
  }
  return tally;
}

// Prints the tally and compares it with the least number of inputs that each condition needs.
// A condition that is not listed is a mistake in this test.
void Check(const char* direction, const Tally& tally, const Tally& least) {
  std::printf("%s, of %d inputs:\n", direction, static_cast<int>(kInputs));
  for (const auto& [condition, count] : tally) {
    std::printf("  %6d  %s\n", count, condition.c_str());
    EXPECT_EQ(least.count(condition), 1U) << condition;
  }
  for (const auto& [condition, count] : least) {
    const auto found = tally.find(condition);
    EXPECT_GE(found == tally.end() ? 0 : found->second, count) << condition;
  }
}

// The least counts follow from the generator's rates.
template <typename Converter, typename Message, typename Model, typename Record>
void Compare(Model (Generator::*message)(), const Tally& leastOfMessages,
             Record (Generator::*record)(), const Tally& leastOfRecords, bool clears = true,
             int faultLine = 0) {
  Check("message to native", MessagesToNatives<Converter, Message>(message, record, faultLine),
        leastOfMessages);
  Check("native to message", NativesToMessages<Converter, Message>(message, record, clears),
        leastOfRecords);
}

const char* const kTrue = proof::Name(oracle::Outcome::kTrue);
const char* const kFalse = proof::Name(oracle::Outcome::kFalse);
const char* const kMapAt = proof::Name(oracle::Outcome::kMapAt);
const char* const kInvalidKey = proof::Name(oracle::Outcome::kInvalidKey);
const char* const kFatal = proof::Name(oracle::Outcome::kFatal);

constexpr char kMissing[] = "a required field is missing";
constexpr char kCount[] = "an identifier has a wrong count";
constexpr char kOctet[] = "a value of an identifier is above 255";
constexpr char kProtocol[] = "unlisted protocol";
constexpr char kState[] = "unlisted block state";
constexpr char kUnlistedInSignals[] = "L1_PROTO or L2_PROTO";

TEST(Differential, IdentifiersAgree) {
  Compare<ZORIDConverter, pb::Zorid>(&Generator::Zorid,
                                     {{kTrue, 5000}, {kFalse, 100}, {kCount, 100}, {kOctet, 1000}},
                                     &Generator::NativeZorid, {{kTrue, 10000}});
}

// The least count for each unlisted value that rejects an entry.
Tally NestedEnumerations(int least) {
  return {{"unlisted administrative status", least},
          {"unlisted operational status", least},
          {"unlisted link status", least},
          {"unlisted speed", least},
          {"unlisted duplex mode", least},
          {"unlisted interface type", least},
          {"unlisted VLAN type", least}};
}

TEST(Differential, EntriesAgree) {
  Tally messages = NestedEnumerations(20);
  messages.insert({{kTrue, 3000},
                   {kFalse, 1000},
                   {kInvalidKey, 300},
                   {kMapAt, 20},
                   {kMissing, 1000},
                   {"no parent", 1000},
                   {kCount, 100},
                   {kOctet, 1000},
                   {"no bridge port number", 1000},
                   {"bridge port number above 65535", 1000},
                   {kProtocol, 50},
                   {kState, 50},
                   {"unlisted category", 20}});
  Tally records = NestedEnumerations(50);
  records.insert({{kTrue, 3000},
                  {kInvalidKey, 1000},
                  {kMapAt, 20},
                  {"MTU above 32 bits", 1000},
                  {kProtocol, 100},
                  {kState, 100},
                  {"unlisted category", 50}});
  Compare<IntfEntryConverter, pb::IntfEntry>(&Generator::Entry, messages, &Generator::NativeEntry,
                                             records);
}

// `states` are the conditions that only blocking signals meet.
template <typename Converter, typename Message, typename Record>
void CompareSignals(oracle::Signal (Generator::*message)(), Record (Generator::*record)(),
                    const Tally& states, int faultLine) {
  Tally messages = {{kTrue, 3000},
                    {kFalse, 500},
                    {kMapAt, 500},
                    {kFatal, kFatalSamples},
                    {kMissing, 500},
                    {kCount, 100},
                    {kOctet, 1000},
                    {kProtocol, 100},
                    {kUnlistedInSignals, 500},
                    {"no element", 500},
                    {"the map holds the interface", 500}};
  Tally records = {{kTrue, 3000}, {kMapAt, 500}, {kProtocol, 100}, {kUnlistedInSignals, 500}};
  messages.insert(states.begin(), states.end());
  records.insert(states.begin(), states.end());
  Compare<Converter, Message>(message, messages, record, records, true, faultLine);
}

TEST(Differential, ShutdownSignalsAgree) {
  CompareSignals<ShutStateConverter, pb::ShutStateSync>(
      &Generator::ShutSignal, &Generator::NativeShut, {}, oracle::kShutFaultLine);
}

TEST(Differential, BlockingSignalsAgree) {
  CompareSignals<BlockStateConverter, pb::BlockStateSync>(&Generator::BlockSignal,
                                                          &Generator::NativeBlockSignal,
                                                          {{kState, 100}}, oracle::kBlockFaultLine);
}

TEST(Differential, RegistrationsAgree) {
  Compare<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      &Generator::Client, {{kTrue, 3000}, {kFalse, 500}, {kMissing, 500}, {kProtocol, 100}},
      &Generator::NativeClient,
      {{kTrue, 10000}, {kProtocol, 100}, {"an element is no category", 100}});
}

TEST(Differential, AggregationOperationsAgree) {
  Compare<LagMemberConverter, pb::LagMemberOperationProto>(&Generator::Lag,
                                                           {{kTrue, 3000},
                                                            {kFalse, 500},
                                                            {"no lag", 100},
                                                            {"no member", 100},
                                                            {kCount, 100},
                                                            {kOctet, 1000},
                                                            {"no token", 1000},
                                                            {"no collecting", 1000},
                                                            {"no distributing", 1000}},
                                                           &Generator::NativeLag, {{kTrue, 10000}});
}

TEST(Differential, PartsOfAnEntryAgree) {
  const Tally whole = {{kTrue, 10000}};
  const Tally common = {{kTrue, 3000}, {kFalse, 100}, {kMissing, 100}};
  const Tally rejecting = {{kTrue, 3000}, {kInvalidKey, 300}};
  const auto with = [](Tally some, const Tally& more) {
    some.insert(more.begin(), more.end());
    return some;
  };
  Compare<proof::GeneralConverter, pb::GeneralInfo>(
      &Generator::General,
      with(common, {{"no bridge port number", 1000}, {"bridge port number above 65535", 1000}}),
      &Generator::NativeGeneral, whole, false);
  Compare<proof::FlagsConverter, pb::InterfaceFlags>(&Generator::Flags, common,
                                                     &Generator::NativeFlags, whole, false);
  const Tally block = {{kProtocol, 100}, {kState, 100}};
  Compare<proof::BlockConverter, pb::BlockInfo>(&Generator::Block, with(common, block),
                                                &Generator::NativeBlock, with(whole, block), false);
  const Tally status = {{"unlisted administrative status", 100},
                        {"unlisted operational status", 50},
                        {"unlisted link status", 50}};
  Compare<proof::StatusConverter, pb::StatusInfo>(
      &Generator::Status, with(with(common, rejecting), status), &Generator::NativeStatus,
      with(rejecting, status), false);
  const Tally physical = {{"unlisted speed", 100}, {"unlisted duplex mode", 100}};
  Compare<proof::PhysicalConverter, pb::PhysicalInfo>(
      &Generator::Physical, with(with(common, rejecting), physical), &Generator::NativePhysical,
      with(with(rejecting, physical), {{"MTU above 32 bits", 1000}}), false);
  const Tally type = {{"unlisted interface type", 100}, {"unlisted VLAN type", 100}};
  Compare<proof::TypeConverter, pb::TypeInfo>(&Generator::Type, with(with(common, rejecting), type),
                                              &Generator::NativeType, with(rejecting, type), false);
}

}  // namespace
