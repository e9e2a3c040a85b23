#include "tools/record_counter.h"

#include <fmt/format.h>

#include <exception>
#include <optional>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tools/entry_counts.h"
#include "tools/wire_walker.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Message;

constexpr std::size_t kHuge = std::size_t{1} << 20;

std::string WhyMalformed(std::string_view record, const Message& message, std::uint64_t offset) {
  const std::optional<WireError> error = FirstWireError(record, *message.GetDescriptor());
  if (!error.has_value()) return "not a message of this type";
  return fmt::format("offset {:#x}: {}{}expected {}, found {}", offset + error->offset, error->path,
                     error->path.empty() ? "" : ": ", error->expected, error->found);
}

std::string WhyIncomplete(const Message& message) {
  std::vector<std::string> missing;
  message.FindInitializationErrors(&missing);
  return fmt::format("{}: expected the required field, found none", missing.front());
}

// The messages, native records and converters that every record of a stream uses again.
class Conversions {
 public:
  using Outcome = RecordCounter::Outcome;

  // Converts the parts of a complete message that have a converter and counts them. False, with
  // the reason, when a converter does not take one; a part that would make a converter end the
  // process never gets there.
  bool Run(const pb::IntfEntry& entry, std::string* problem) {
    if (!BothWays(entry_converter_, entry, entry_, entry_back_)) return Refuse("entry", problem);
    counts_.Add(entry);
    return true;
  }

  bool Run(const pb::IntfEntryList& list, std::string* problem) {
    if (!Run(list.infoclient(), problem)) return false;
    for (const pb::IntfEntry& entry : list.intfentry()) {
      if (!Run(entry, problem)) return false;
    }
    return true;
  }

  bool Run(const pb::IntfIndication& indication, std::string* problem) {
    if (!Run(indication.intfentry(), problem)) return false;
    counts_.Add(indication);
    return true;
  }

  bool Run(const pb::InformationClient& client, std::string* problem) {
    client_.interfaceCategories.clear();
    if (!BothWays(client_converter_, client, client_, client_back_)) {
      return Refuse("client", problem);
    }
    counts_.Add(client);
    return true;
  }

  bool Run(const pb::ShutStateSync& signal, std::string* problem) {
    if (!IsSafe(signal, "shutProtocol", signal.shutprotocol(), problem)) return false;
    shut_.shutStates.clear();
    if (!BothWays(shut_converter_, signal, shut_, shut_back_)) return Refuse("signal", problem);
    counts_.Add(signal);
    return true;
  }

  bool Run(const pb::BlockStateSync& signal, std::string* problem) {
    if (!IsSafe(signal, "blockProtocol", signal.blockprotocol(), problem)) return false;
    block_.blockStates.clear();
    if (!BothWays(block_converter_, signal, block_, block_back_)) return Refuse("signal", problem);
    counts_.Add(signal);
    return true;
  }

  bool Run(const pb::LagMemberOperationProto& operation, std::string* problem) {
    if (!BothWays(lag_converter_, operation, lag_, lag_back_)) {
      *problem = WhyRefused(operation);
      return false;
    }
    counts_.Add(operation);
    return true;
  }

  bool Run(const pb::Zorid& id, std::string* problem) {
    if (BothWays(zorid_converter_, id, zorid_, zorid_back_)) return true;
    *problem = fmt::format("value: expected 4 values, found {}", id.value_size());
    return false;
  }

  // The other messages have no native side.
  bool Run(const Message&, std::string*) { return true; }

  std::uint64_t conversions() const { return conversions_; }
  const EntryCounts& counts() const { return counts_; }

 private:
  template <typename Converter, typename Proto, typename Native>
  bool BothWays(Converter& converter, const Proto& message, Native& native, Proto& back) {
    if (!converter.Convert(message, native) || !converter.Convert(native, back)) return false;
    conversions_ += 2;
    return true;
  }

  static bool Refuse(const char* what, std::string* problem) {
    *problem = fmt::format("the converter does not take the {}", what);
    return false;
  }

  template <typename Signal>
  static bool IsSafe(const Signal& signal, const char* field, pb::ProtocolType protocol,
                     std::string* problem) {
    if (protocol == pb::L1_PROTO || protocol == pb::L2_PROTO) {
      *problem = fmt::format("{}: expected a protocol that shuts down or blocks, found {}", field,
                             pb::ProtocolType_Name(protocol));
      return false;
    }
    for (int i = 0; i < signal.intfs_size(); ++i) {
      const int count = signal.intfs(i).zorid().value_size();
      if (count == 4) continue;
      *problem = fmt::format("intfs[{}].zorid: expected 4 values, found {}", i, count);
      return false;
    }
    return true;
  }

  static std::string WhyRefused(const pb::LagMemberOperationProto& operation) {
    for (const bool lag : {true, false}) {
      const char* name = lag ? "lag" : "member";
      if (!(lag ? operation.has_lag() : operation.has_member())) {
        return fmt::format("{}: expected an identifier, found none", name);
      }
      const int count = (lag ? operation.lag() : operation.member()).value_size();
      if (count != 4) return fmt::format("{}: expected 4 values, found {}", name, count);
    }
    return "the converter does not take the operation";
  }

  std::uint64_t conversions_ = 0;
  EntryCounts counts_;
  IntfEntryConverter entry_converter_;
  IntfEntry entry_;
  pb::IntfEntry entry_back_;
  ZORL2InfoClientConfigConverter client_converter_;
  ZORL2InfoClientConfig client_;
  pb::InformationClient client_back_;
  ShutStateConverter shut_converter_;
  ShutStateInfoSyncSignal shut_;
  pb::ShutStateSync shut_back_;
  BlockStateConverter block_converter_;
  BlockStateInfoSyncSignal block_;
  pb::BlockStateSync block_back_;
  LagMemberConverter lag_converter_;
  LagMemberOperation lag_;
  pb::LagMemberOperationProto lag_back_;
  ZORIDConverter zorid_converter_;
  zorid_t zorid_;
  pb::Zorid zorid_back_;
};

template <typename Record>
class TypedCounter : public RecordCounter {
 public:
  explicit TypedCounter(std::unique_ptr<Record> message) : message_(std::move(message)) {}

  Outcome Take(std::string_view record, std::uint64_t offset, std::string* problem) override {
    // A huge record must not make every later one pay for its memory.
    if (record.size() > kHuge) message_.reset(message_->New());
    if (!message_->ParsePartialFromArray(record.data(), static_cast<int>(record.size()))) {
      *problem = WhyMalformed(record, *message_, offset);
      return Outcome::kMalformed;
    }
    if (!message_->IsInitialized()) {
      *problem = WhyIncomplete(*message_);
      return Outcome::kIncomplete;
    }
    try {
      return conversions_.Run(*message_, problem) ? Outcome::kGood : Outcome::kRefused;
    } catch (const std::exception& error) {
      *problem = fmt::format("the converter throws: {}", error.what());
      return Outcome::kRefused;
    }
  }

  std::uint64_t conversions() const override { return conversions_.conversions(); }
  std::vector<CountSection> Sections() const override { return conversions_.counts().Sections(); }

 private:
  std::unique_ptr<Record> message_;
  Conversions conversions_;
};

template <typename Record>
std::unique_ptr<RecordCounter> MakeIf(const google::protobuf::Descriptor* type) {
  if (type != Record::descriptor()) return nullptr;
  return std::make_unique<TypedCounter<Record>>(std::make_unique<Record>());
}

}  // namespace

std::unique_ptr<RecordCounter> MakeRecordCounter(const Message& prototype) {
  const auto* type = prototype.GetDescriptor();
  std::unique_ptr<RecordCounter> counter = MakeIf<pb::IntfEntry>(type);
  if (counter == nullptr) counter = MakeIf<pb::IntfEntryList>(type);
  if (counter == nullptr) counter = MakeIf<pb::IntfIndication>(type);
  if (counter == nullptr) counter = MakeIf<pb::InformationClient>(type);
  if (counter == nullptr) counter = MakeIf<pb::ShutStateSync>(type);
  if (counter == nullptr) counter = MakeIf<pb::BlockStateSync>(type);
  if (counter == nullptr) counter = MakeIf<pb::LagMemberOperationProto>(type);
  if (counter == nullptr) counter = MakeIf<pb::Zorid>(type);
  if (counter == nullptr) {
    counter = std::make_unique<TypedCounter<Message>>(std::unique_ptr<Message>(prototype.New()));
  }
  return counter;
}

const char* OutcomeName(RecordCounter::Outcome outcome) {
  static const char* const kNames[] = {"good", "malformed", "incomplete", "refused"};
  return kNames[static_cast<int>(outcome)];
}

}  // namespace zorl2_inspect
