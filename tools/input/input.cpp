#include "tools/input/input.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "tools/input/files.h"
#include "tools/input/hex_text.h"
#include "tools/input/json_reader.h"
#include "tools/input/message_text.h"
#include "tools/input/mistakes.h"
#include "tools/model/check_text.h"
#include "tools/model/message_types.h"
#include "tools/wire/wire_find.h"

namespace zorl2_inspect {
namespace {

// Fewer fields prove nothing: short messages fit many types.
constexpr int kFewestFields = 5;

using google::protobuf::Descriptor;
using google::protobuf::Message;

bool IsBlank(std::string_view line) { return line.find_first_not_of(" \t\r") == line.npos; }

std::string DecodeHexOrThrow(const std::string& content, const std::string& name) {
  Problem problem;
  std::optional<std::string> bytes = DecodeHex(content, &problem);
  if (!bytes) throw Error(name, problem);
  return std::move(*bytes);
}

}  // namespace

const Descriptor* TypeNamed(const std::string& type) {
  const Descriptor* const found = FindMessageType(type);
  if (found != nullptr) return found;
  throw Error("--type", fmt::format("\"{}\"", type),
              "a message type; \"zorl2-inspect types\" lists them");
}

const Descriptor* ReportInferred(const std::string& name, InputForm form,
                                 const InferredType& inferred) {
  if (inferred.type == nullptr) throw Error(name, inferred.reason, "--type");
  PrintNote(fmt::format("{}: read as {}, type {} inferred: {}", name, FormName(form),
                        inferred.type->name(), inferred.reason));
  return inferred.type;
}

Input::Input(const InputOptions& options)
    : name_(InputName(options.file)), form_(options.form), delimited_(options.delimited) {
  if (delimited_ && form_ == InputForm::kText) RejectTextStream();
  if (options.follow && (!delimited_ || form_ == InputForm::kHex)) {
    throw Error(name_, "--follow", "a stream of wire bytes or of JSON, with --delimited");
  }
  if (!options.type.empty()) type_ = TypeNamed(options.type);
  descriptor_ = OpenFile(options.file);
  try {
    Open(options);
  } catch (...) {
    close(descriptor_);
    throw;
  }
}

Input::~Input() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Input::Open(const InputOptions& options) {
  struct stat status {};
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  }
  if (delimited_) {
    OpenStream(options);
  } else {
    ReadWhole(options);
  }
}

void Input::OpenStream(const InputOptions& options) {
  const RecordStream::Options stream{options.longest, options.follow, options.before_wait};
  stream_ = std::make_unique<RecordStream>(descriptor_, stream);
  if (form_ == InputForm::kInferred) RecogniseStreamForm(options);
  if (form_ == InputForm::kJson) stream_->ReadLines();
  if (form_ == InputForm::kHex) {
    std::string text(stream_->Beginning(std::string::npos));
    text += ReadAll(descriptor_, name_);
    const std::string bytes = DecodeHexOrThrow(text, name_);
    close(std::exchange(descriptor_, -1));
    descriptor_ = OpenBytes(bytes, name_);
    size_ = bytes.size();
    stream_ = std::make_unique<RecordStream>(descriptor_, stream);
  }
  if (type_ != nullptr) return;
  read_ahead_ = Next(ahead_);
  if (!read_ahead_) throw Error(name_, "an empty stream", "--type");
  if (ahead_.damage) throw Error(name_, *ahead_.damage);
  if (type_ != nullptr) return;
  InferredType inferred = InferTypeFromWire(ahead_.bytes);
  if (inferred.type != nullptr) inferred.reason += " (first record)";
  type_ = ReportInferred(name_, form_, inferred);
}

void Input::RecogniseStreamForm(const InputOptions& options) {
  const std::string_view beginning = stream_->Beginning(4096);
  form_ = InputForm::kWire;
  if (LooksLikeRecord(beginning)) return;
  const InputForm form = RecogniseForm(beginning);
  // A record of 123 bytes, whose length is an opening brace, begins with neither of these.
  const std::string_view text = WithoutMark(beginning).substr(0, 2);
  if (form == InputForm::kJson && (text == "{\"" || text == "{}")) form_ = InputForm::kJson;
  if (form == InputForm::kHex && !options.follow) form_ = InputForm::kHex;
  if (form == InputForm::kText) RejectTextStream();
  if (form_ != InputForm::kWire) return;
  const std::optional<Mistake> mistake = RecogniseMistake(beginning, options.file);
  if (mistake) throw Error(name_, mistake->found, mistake->expected);
  if (!options.follow) RejectSingleMessage(stream_->Beginning(std::string::npos));
}

void Input::RejectTextStream() const {
  throw Error(name_, FormName(InputForm::kText),
              "wire bytes, hexadecimal text or JSON with --delimited");
}

void Input::RejectSingleMessage(std::string_view bytes) {
  const Descriptor* type = type_;
  if (type == nullptr || !IsFlawless(bytes, *type)) {
    const InferredType inferred = InferTypeFromWire(bytes);
    if (!inferred.flawless || inferred.fields < kFewestFields) return;
    type = inferred.type;
  }
  if (bytes.empty()) return;
  throw Error(name_, fmt::format("one message, of type {}", type->name()),
              "a stream of messages; without --delimited \"zorl2-inspect show\" and \"summary\" "
              "read one");
}

void Input::TakeLine(std::string_view line, Record& record) {
  ++line_;
  if (line_ == 1) line = WithoutMark(line);
  if (type_ == nullptr) {
    type_ = ReportInferred(name_, form_, InferTypeOfText({name_, line, true}));
  }
  std::vector<std::unique_ptr<Message>> messages;
  const std::optional<JsonProblem> problem = ReadJson(line, *type_, JsonExtent::kAll, &messages);
  if (!problem && messages.size() == 1) {
    messages.front()->SerializePartialToString(&bytes_);
    record.bytes = bytes_;
    return;
  }
  Problem& damage = record.damage.emplace();
  damage.record = record.number;
  damage.place = TextPlace{line_, 1};
  damage.found = fmt::format("{} messages", messages.size());
  damage.expected = "one message on each line, as jq -c writes them";
  if (!problem) return;
  damage.place->column = PlaceAt(line, problem->offset).column;
  damage.path = problem->path;
  damage.found = problem->found;
  damage.expected = problem->expected;
}

void Input::RejectMistakes(const std::string& file, std::string_view content,
                           std::string_view bytes) {
  if (type_ != nullptr && IsFlawless(bytes, *type_)) return;
  const InferredType inferred = InferTypeFromWire(bytes);
  if (inferred.flawless && type_ == nullptr) return;
  std::optional<Mistake> mistake = RecogniseMistake(content, file);
  if (!mistake && content.data() != bytes.data()) mistake = RecogniseMistake(bytes, file);
  if (mistake) throw Error(name_, mistake->found, mistake->expected);
  if (!inferred.flawless || inferred.fields < kFewestFields) return;
  const std::unique_ptr<Message> message = NewMessage(*type_);
  const bool whole = message->ParseFromArray(bytes.data(), static_cast<int>(bytes.size()));
  const std::string found =
      fmt::format("a message that fits {} better than {}", inferred.type->name(), type_->name());
  if (!whole) throw Error(name_, found, "--type " + inferred.type->name());
  PrintNote(fmt::format("{}: {} (--type {})", name_, found, inferred.type->name()));
}

void Input::ReadWhole(const InputOptions& options) {
  std::string content = ReadAll(descriptor_, name_);
  if (form_ == InputForm::kInferred) form_ = RecogniseForm(content);
  const bool infer_type = options.type.empty();
  if (form_ == InputForm::kJson || form_ == InputForm::kText) {
    const MessageText text{name_, WithoutMark(content), form_ == InputForm::kJson};
    if (infer_type) type_ = ReportInferred(name_, form_, InferTypeOfText(text));
    bytes_ =
        ReadMessage(text, *type_, options.strict ? nullptr : &missing_)->SerializePartialAsString();
    return;
  }
  if (form_ == InputForm::kHex) {
    bytes_ = DecodeHexOrThrow(content, name_);
  } else {
    bytes_ = std::move(content);
    content.clear();
  }
  RejectMistakes(options.file, content.empty() ? bytes_ : content, bytes_);
  if (infer_type) type_ = ReportInferred(name_, form_, InferTypeFromWire(bytes_));
}

std::uint64_t Input::consumed() const { return stream_ ? stream_->consumed() : bytes_.size(); }

bool Input::Next(Record& record) {
  if (read_ahead_) {
    read_ahead_ = false;
    record = ahead_;
    return true;
  }
  if (ended_) return false;
  if (!stream_) {
    record = {next_number_, 0, bytes_, std::nullopt};
    ended_ = true;
    return true;
  }
  record = {next_number_, 0, {}, std::nullopt};
  std::string_view bytes;
  RecordStream::Status status = stream_->Next(&bytes);
  for (; status == RecordStream::Status::kRecord && form_ == InputForm::kJson && IsBlank(bytes);
       ++line_) {
    status = stream_->Next(&bytes);
  }
  switch (status) {
    case RecordStream::Status::kRecord:
      record.offset = stream_->content_offset();
      if (form_ == InputForm::kJson) {
        TakeLine(bytes, record);
      } else {
        record.bytes = bytes;
      }
      break;
    case RecordStream::Status::kEnd:
      ended_ = true;
      return false;
    case RecordStream::Status::kBroken:
      ended_ = true;
      [[fallthrough]];
    case RecordStream::Status::kSkipped:
      record.offset = stream_->offset();
      record.damage = stream_->problem();
      record.damage->record = next_number_;
  }
  ++next_number_;
  return true;
}

std::optional<Problem> Input::Parse(const Record& record, Message& message) const {
  if (message.ParsePartialFromArray(record.bytes.data(), static_cast<int>(record.bytes.size()))) {
    return std::nullopt;
  }
  Problem problem = FirstWireError(record.bytes, *type_).value();
  problem.record = stream_ ? record.number : 0;
  *problem.offset += record.offset;
  if (!stream_ && LooksDelimited(record.bytes)) {
    problem.expected += "; --delimited reads streams, and this looks like one";
  }
  return problem;
}

Problem Input::Locate(const Record& record, const zorl2::check::Verdict& verdict) const {
  if (missing_ && IsIncomplete(verdict)) return *missing_;
  Problem problem = RejectionOf(verdict);
  problem.record = stream_ ? record.number : 0;
  if (has_offsets()) {
    problem.offset = record.offset + OffsetOf(record.bytes, *type_, verdict.field);
  }
  return problem;
}

}  // namespace zorl2_inspect
