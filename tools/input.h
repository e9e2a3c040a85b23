// What a subcommand reads: one message or a stream of them, from a file or standard input, in any
// of four forms.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tools/record_stream.h"
#include "tools/type_guess.h"

namespace zorl2_inspect {

enum class InputForm {
  kGuessed,
  kWire,
  kHex,  // hexadecimal text, see tools/hex_text.h
  kJson,
  kText,  // the protobuf text format
};

struct InputOptions {
  std::string file = "-";
  // Empty: guessed from the content.
  std::string type;
  InputForm form = InputForm::kGuessed;
  // A stream of messages, each behind its length as a varint. Wire bytes or hexadecimal text.
  bool delimited = false;
};

// No input that is held in memory as a whole, and no record of a stream, is longer than this.
inline constexpr std::size_t kLongestInput = std::size_t{512} << 20;
inline constexpr std::size_t kLongestRecord = std::size_t{64} << 20;

// The name of a form, such as "hexadecimal text".
const char* FormName(InputForm form);
// The file's name in errors and headings: "standard input" for "-".
std::string InputName(const std::string& file);
// Opens for reading ("-" is standard input, which stays open when the result is closed). Throws
// InputError.
int OpenInput(const std::string& file);
// The whole content. Throws InputError, also for more than kLongestInput.
std::string ReadInput(const std::string& file);
// The type with this name. Throws InputError when there is none.
const google::protobuf::Descriptor* TypeNamed(const std::string& file, const std::string& type);
// The guessed type, said on standard error with its reason. Throws InputError when there is none.
const google::protobuf::Descriptor* TypeGuessed(const std::string& name, InputForm form,
                                                const TypeGuess& guess);

// One message of an input.
struct Record {
  // In the wire format whatever the form of the input; valid until the next call of Next.
  std::string_view bytes;
  // Where the first of the bytes stands in the input (in the bytes that hexadecimal text stands
  // for); 0 in the other forms.
  std::uint64_t offset = 0;
  // From 1.
  std::uint64_t number = 0;
};

class Input {
 public:
  // Opens the file, recognises form and type, and says on standard error what it guessed and why.
  // Throws InputError.
  explicit Input(const InputOptions& options);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  const std::string& name() const { return name_; }
  InputForm form() const { return form_; }
  bool delimited() const { return delimited_; }
  const google::protobuf::Descriptor& type() const { return *type_; }
  // The size of the file in bytes, 0 when it is not known; and how many of them are read.
  std::uint64_t size() const { return size_; }
  std::uint64_t consumed() const;

  // False at the end. Throws InputError when what follows is no record.
  bool Next(Record& record);

  // Replaces the message by the record's. Throws InputError for bytes that are no such message and
  // for a required field that is missing.
  void Parse(const Record& record, google::protobuf::Message& message) const;

  // The first record, parsed. Throws InputError when there is none.
  std::unique_ptr<google::protobuf::Message> ParseOnly();

  // "offset 12" or "record 3 at offset 12", for errors about a record.
  std::string Where(const Record& record, std::uint64_t offset_in_record) const;
  // An error in the record at a field of it.
  [[noreturn]] void Fail(const Record& record, std::string_view path,
                         std::string_view problem) const;

 private:
  void OpenStream(const std::string& type_name);
  void ReadWhole(const std::string& type_name);

  std::string name_;
  InputForm form_;
  bool delimited_;
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
  const google::protobuf::Descriptor* type_ = nullptr;
  // A stream, whose first record may have been read ahead.
  std::unique_ptr<RecordStream> stream_;
  bool read_ahead_ = false;
  Record ahead_;
  // Or one message: its wire bytes, and the text that they were made from.
  std::string bytes_;
  std::uint64_t next_number_ = 1;
};

}  // namespace zorl2_inspect
