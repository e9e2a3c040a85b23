#include "tools/input/input.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "tools/input/hex_text.h"
#include "tools/input/message_text.h"
#include "tools/input/mistakes.h"
#include "tools/model/check_text.h"
#include "tools/model/message_types.h"
#include "tools/wire/wire_find.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::Message;

// "-" is standard input, which remains open when the result is closed.
int OpenFile(const std::string& file) {
  const int descriptor = file == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)
                                     : open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) return descriptor;
  throw Error(InputName(file), fmt::format("cannot open: {}", std::strerror(errno)));
}

std::string ReadAll(int descriptor, const std::string& name) {
  std::string content;
  std::size_t filled = 0;
  for (;;) {
    // The buffer grows as bytes arrive, never by a length that the bytes claim.
    if (content.size() - filled < 65536) content.resize(content.size() * 2 + 65536);
    const ssize_t got = read(descriptor, content.data() + filled, content.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw Error(name, fmt::format("cannot read: {}", std::strerror(errno)));
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
    if (filled > kLongestInput) {
      throw Error(name, "more than 512 MiB", "a shorter input, or a stream with --delimited");
    }
  }
  content.resize(filled);
  return content;
}

std::string DecodeHexOrThrow(const std::string& content, const std::string& name) {
  Problem problem;
  std::optional<std::string> bytes = DecodeHex(content, &problem);
  if (!bytes) throw Error(name, problem);
  return std::move(*bytes);
}

// Returns a descriptor of a file in memory with these bytes.
int OpenBytes(const std::string& bytes, const std::string& name) {
  const int descriptor = memfd_create("zorl2-inspect", MFD_CLOEXEC);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t put = write(descriptor, bytes.data() + written, bytes.size() - written);
    if (put <= 0) {
      close(descriptor);
      throw Error(name, "cannot hold the bytes in memory");
    }
    written += static_cast<std::size_t>(put);
  }
  lseek(descriptor, 0, SEEK_SET);
  return descriptor;
}

}  // namespace

std::string InputName(const std::string& file) { return file == "-" ? "standard input" : file; }

std::string ReadInput(const std::string& file) {
  const int descriptor = OpenFile(file);
  try {
    std::string content = ReadAll(descriptor, InputName(file));
    close(descriptor);
    return content;
  } catch (...) {
    close(descriptor);
    throw;
  }
}

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
  if (delimited_ && (form_ == InputForm::kJson || form_ == InputForm::kText)) {
    throw Error(name_, FormName(form_), "wire bytes or hexadecimal text with --delimited");
  }
  if (options.follow && (!delimited_ || form_ == InputForm::kHex)) {
    throw Error(name_, "--follow", "a stream of wire bytes, with --delimited");
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
  if (form_ == InputForm::kInferred && options.follow) form_ = InputForm::kWire;
  if (form_ == InputForm::kInferred) {
    // Only the beginning of a file can be read twice; other streams are wire bytes.
    std::string beginning(4096, '\0');
    const ssize_t got = pread(descriptor_, beginning.data(), beginning.size(), 0);
    beginning.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    form_ = RecogniseForm(beginning) == InputForm::kHex ? InputForm::kHex : InputForm::kWire;
    if (form_ == InputForm::kWire && !LooksLikeRecord(beginning)) {
      const std::optional<Mistake> mistake = RecogniseMistake(beginning, options.file);
      if (mistake) throw Error(name_, mistake->found, mistake->expected);
    }
  }
  if (form_ == InputForm::kHex) {
    const std::string bytes = DecodeHexOrThrow(ReadAll(descriptor_, name_), name_);
    close(std::exchange(descriptor_, -1));
    descriptor_ = OpenBytes(bytes, name_);
    size_ = bytes.size();
  }
  stream_ = std::make_unique<RecordStream>(
      descriptor_, RecordStream::Options{options.longest, options.follow, options.before_wait});
  if (type_ != nullptr) return;
  read_ahead_ = Next(ahead_);
  if (!read_ahead_) throw Error(name_, "an empty stream", "--type");
  if (ahead_.damage) throw Error(name_, *ahead_.damage);
  InferredType inferred = InferTypeFromWire(ahead_.bytes);
  if (inferred.type != nullptr) inferred.reason += " (first record)";
  type_ = ReportInferred(name_, form_, inferred);
}

void Input::RejectMistakes(const std::string& file, std::string_view content,
                           std::string_view bytes) {
  if (type_ != nullptr && IsFlawless(bytes, *type_)) return;
  const InferredType inferred = InferTypeFromWire(bytes);
  if (inferred.flawless && type_ == nullptr) return;
  std::optional<Mistake> mistake = RecogniseMistake(content, file);
  if (!mistake && content.data() != bytes.data()) mistake = RecogniseMistake(bytes, file);
  if (mistake) throw Error(name_, mistake->found, mistake->expected);
  // A few fields prove nothing: short messages fit many types.
  constexpr int kFewest = 5;
  if (!inferred.flawless || inferred.fields < kFewest) return;
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
  switch (stream_->Next(&record.bytes)) {
    case RecordStream::Status::kRecord:
      record.offset = stream_->content_offset();
      break;
    case RecordStream::Status::kEnd:
      ended_ = true;
      return false;
    case RecordStream::Status::kBroken:
      ended_ = true;
      [[fallthrough]];
    case RecordStream::Status::kSkipped:
      record.bytes = {};
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
  if (form_ == InputForm::kWire || form_ == InputForm::kHex) {
    problem.offset = record.offset + OffsetOf(record.bytes, *type_, verdict.field);
  }
  return problem;
}

}  // namespace zorl2_inspect
