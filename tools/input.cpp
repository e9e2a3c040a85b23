#include "tools/input.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "tools/error.h"
#include "tools/field_text.h"
#include "tools/hex_text.h"
#include "tools/message_text.h"
#include "tools/message_types.h"
#include "tools/type_guess.h"
#include "tools/wire_reader.h"
#include "tools/wire_walker.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::Message;

constexpr std::string_view kStreamAdvice = " (a longer stream can be read with --delimited)";

std::string ReadAll(int descriptor, const std::string& name, std::string_view advice) {
  std::string content;
  std::size_t filled = 0;
  for (;;) {
    // Grown as bytes arrive, never by what the bytes claim.
    if (content.size() - filled < 65536) content.resize(content.size() * 2 + 65536);
    const ssize_t got = read(descriptor, content.data() + filled, content.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw InputError(name, "", fmt::format("cannot read: {}", std::strerror(errno)));
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
    if (filled > kLongestInput) {
      throw InputError(name, fmt::format("offset {}", kLongestInput),
                       fmt::format("expected at most 512 MiB{}", advice));
    }
  }
  content.resize(filled);
  return content;
}

bool IsPrintable(std::string_view content) {
  return std::all_of(content.begin(), content.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 || byte == '\n' || byte == '\r' || byte == '\t';
  });
}

// A name with ':' or a brace behind it, after blanks and comments.
bool LooksLikeText(std::string_view content) {
  std::size_t at = 0;
  for (;;) {
    at = content.find_first_not_of(" \t\r\n", at);
    if (at == content.npos) return false;
    if (content[at] != '#') break;
    at = content.find('\n', at);
    if (at == content.npos) return false;
  }
  const std::size_t start = at;
  while (at < content.size() &&
         (std::isalnum(static_cast<unsigned char>(content[at])) != 0 || content[at] == '_')) {
    ++at;
  }
  if (at == start || std::isdigit(static_cast<unsigned char>(content[start])) != 0) return false;
  at = content.find_first_not_of(" \t\r\n", at);
  return at != content.npos && std::strchr(":{<", content[at]) != nullptr;
}

InputForm Recognise(std::string_view content) {
  content = WithoutMark(content);
  const std::size_t first = content.find_first_not_of(" \t\r\n");
  if (first == content.npos || !IsPrintable(content)) return InputForm::kWire;
  if (content[first] == '{') return InputForm::kJson;
  HexError ignored;
  // The beginning decides; a mistake further down is an error then and not another form.
  const std::size_t line_end = content.find('\n', first);
  if (DecodeHex(content.substr(0, line_end), &ignored)) return InputForm::kHex;
  if (LooksLikeText(content)) return InputForm::kText;
  return InputForm::kWire;
}

std::string DecodeHexOrThrow(const std::string& content, const std::string& name) {
  HexError error;
  std::optional<std::string> bytes = DecodeHex(content, &error);
  if (!bytes) {
    throw InputError(name, fmt::format("line {}, column {}", error.line, error.column),
                     error.problem);
  }
  return std::move(*bytes);
}

// Whether the bytes are records behind their lengths, to the last byte.
bool LooksDelimited(std::string_view bytes) {
  WireReader reader(bytes);
  int records = 0;
  while (!reader.AtEnd()) {
    std::size_t length = 0;
    if (!reader.Length(&length) || length > reader.left()) return false;
    reader.Take(length);
    ++records;
  }
  return records > 0;
}

}  // namespace

const char* FormName(InputForm form) {
  switch (form) {
    case InputForm::kHex:
      return "hexadecimal text";
    case InputForm::kJson:
      return "JSON";
    case InputForm::kText:
      return "protobuf text";
    case InputForm::kWire:
    case InputForm::kGuessed:
      break;
  }
  return "wire bytes";
}

std::string InputName(const std::string& file) { return file == "-" ? "standard input" : file; }

int OpenInput(const std::string& file) {
  if (file == "-") return fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) {
    throw InputError(file, "", fmt::format("cannot open: {}", std::strerror(errno)));
  }
  return descriptor;
}

std::string ReadInput(const std::string& file) {
  const int descriptor = OpenInput(file);
  try {
    std::string content = ReadAll(descriptor, InputName(file), "");
    close(descriptor);
    return content;
  } catch (...) {
    close(descriptor);
    throw;
  }
}

const Descriptor* TypeNamed(const std::string& file, const std::string& type) {
  const Descriptor* const found = FindMessageType(type);
  if (found != nullptr) return found;
  throw InputError(InputName(file), "",
                   fmt::format("expected a message type with --type, found \"{}\" "
                               "(\"zorl2-inspect types\" lists them)",
                               type));
}

const Descriptor* TypeGuessed(const std::string& name, InputForm form, const TypeGuess& guess) {
  if (guess.type == nullptr) throw InputError(name, "", guess.reason);
  PrintNote(fmt::format("{}: read as {}, type {} guessed: {}", name, FormName(form),
                        guess.type->name(), guess.reason));
  return guess.type;
}

Input::Input(const InputOptions& options)
    : name_(InputName(options.file)), form_(options.form), delimited_(options.delimited) {
  if (delimited_ && (form_ == InputForm::kJson || form_ == InputForm::kText)) {
    throw InputError(name_, "", "expected wire bytes or hexadecimal text with --delimited");
  }
  if (!options.type.empty()) type_ = TypeNamed(options.file, options.type);
  descriptor_ = OpenInput(options.file);
  struct stat status {};
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  }
  try {
    if (delimited_) {
      OpenStream(options.type);
    } else {
      ReadWhole(options.type);
    }
  } catch (...) {
    close(descriptor_);
    throw;
  }
}

Input::~Input() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Input::OpenStream(const std::string& type_name) {
  if (form_ == InputForm::kGuessed) {
    // Only what can be read a second time is looked at; other streams are wire bytes.
    std::string beginning(4096, '\0');
    const ssize_t got = pread(descriptor_, beginning.data(), beginning.size(), 0);
    beginning.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    form_ = Recognise(beginning) == InputForm::kHex ? InputForm::kHex : InputForm::kWire;
  }
  if (form_ == InputForm::kHex) {
    const std::string bytes = DecodeHexOrThrow(ReadAll(descriptor_, name_, kStreamAdvice), name_);
    close(descriptor_);
    descriptor_ = memfd_create("zorl2-inspect", MFD_CLOEXEC);
    std::size_t written = 0;
    while (written < bytes.size()) {
      const ssize_t put = write(descriptor_, bytes.data() + written, bytes.size() - written);
      if (put <= 0) throw InputError(name_, "", "cannot hold the bytes in memory");
      written += static_cast<std::size_t>(put);
    }
    lseek(descriptor_, 0, SEEK_SET);
    size_ = bytes.size();
  }
  stream_ = std::make_unique<RecordStream>(descriptor_, kLongestRecord);
  if (!type_name.empty()) return;
  read_ahead_ = Next(ahead_);
  if (!read_ahead_) throw InputError(name_, "", "expected --type, because the stream is empty");
  TypeGuess guess = GuessFromWire(ahead_.bytes);
  if (guess.type != nullptr) guess.reason += " (first record)";
  type_ = TypeGuessed(name_, form_, guess);
}

void Input::ReadWhole(const std::string& type_name) {
  std::string content = ReadAll(descriptor_, name_, kStreamAdvice);
  if (form_ == InputForm::kGuessed) form_ = Recognise(content);
  const bool guess_type = type_name.empty();
  if (form_ == InputForm::kJson || form_ == InputForm::kText) {
    const MessageText text{name_, WithoutMark(content), form_ == InputForm::kJson};
    if (guess_type) type_ = TypeGuessed(name_, form_, GuessTypeOfText(text));
    bytes_ = ReadMessage(text, *type_)->SerializeAsString();
    return;
  }
  bytes_ = form_ == InputForm::kHex ? DecodeHexOrThrow(content, name_) : std::move(content);
  if (guess_type) type_ = TypeGuessed(name_, form_, GuessFromWire(bytes_));
}

std::uint64_t Input::consumed() const { return stream_ ? stream_->consumed() : bytes_.size(); }

bool Input::Next(Record& record) {
  if (read_ahead_) {
    read_ahead_ = false;
    record = ahead_;
    return true;
  }
  if (!stream_) {
    if (next_number_ > 1) return false;
    record = {bytes_, 0, next_number_++};
    return true;
  }
  switch (stream_->Next(&record.bytes)) {
    case RecordStream::Status::kRecord:
      record.offset = stream_->content_offset();
      record.number = next_number_++;
      return true;
    case RecordStream::Status::kEnd:
      return false;
    case RecordStream::Status::kSkipped:
    case RecordStream::Status::kBroken:
      break;
  }
  throw InputError(name_, fmt::format("record {} at offset {}", next_number_, stream_->offset()),
                   stream_->problem());
}

std::string Input::Where(const Record& record, std::uint64_t offset_in_record) const {
  if (form_ == InputForm::kJson || form_ == InputForm::kText) return "";
  const std::string offset = fmt::format("offset {}", record.offset + offset_in_record);
  return stream_ ? fmt::format("record {}, {}", record.number, offset) : offset;
}

void Input::Fail(const Record& record, std::string_view path, std::string_view problem) const {
  std::string where =
      stream_ ? fmt::format("record {} at offset {}", record.number, record.offset) : std::string();
  if (!path.empty()) where += where.empty() ? std::string(path) : fmt::format(", {}", path);
  throw InputError(name_, where, problem);
}

void Input::Parse(const Record& record, Message& message) const {
  if (!message.ParsePartialFromArray(record.bytes.data(), static_cast<int>(record.bytes.size()))) {
    const auto error = FirstWireError(record.bytes, *message.GetDescriptor());
    std::string where = Where(record, error.has_value() ? error->offset : 0);
    std::string problem = fmt::format("expected a {}, found other bytes", type_->name());
    if (error.has_value()) {
      if (!error->path.empty()) where += ", " + error->path;
      problem = fmt::format("expected {}, found {}", error->expected, error->found);
    }
    if (!stream_ && LooksDelimited(record.bytes)) {
      problem += " (it looks like a stream of messages: --delimited reads those)";
    }
    throw InputError(name_, where, problem);
  }
  if (!message.IsInitialized()) {
    std::vector<std::string> missing;
    message.FindInitializationErrors(&missing);
    const std::string more =
        missing.size() > 1 ? fmt::format(" ({} more are missing)", missing.size() - 1) : "";
    std::string found = "none";
    for (const UnknownValue& unknown : UnknownValues(message)) {
      // A number that the enumeration does not list leaves the field unset.
      if (unknown.field_path == missing.front()) found = unknown.known_as;
    }
    Fail(record, missing.front(),
         fmt::format("expected this required field of {}, found {}{}", type_->name(), found, more));
  }
}

std::unique_ptr<Message> Input::ParseOnly() {
  Record record;
  if (!Next(record)) throw InputError(name_, "", "expected a message, found an empty stream");
  std::unique_ptr<Message> message = NewMessage(*type_);
  Parse(record, *message);
  return message;
}

}  // namespace zorl2_inspect
