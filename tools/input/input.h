// Reads messages: one, or a stream of them, from a file or standard input, in any of four forms.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "check/check.h"
#include "tools/input/input_form.h"
#include "tools/input/record_stream.h"
#include "tools/input/type_inference.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

// No record of a stream is longer than this.
inline constexpr std::size_t kLongestRecord = std::size_t{64} << 20;

struct InputOptions {
  std::string file = "-";
  std::string type;  // Inferred from the content if empty.
  InputForm form = InputForm::kInferred;
  bool delimited = false;  // A stream: length-prefixed messages, or one as JSON on each line.
  std::size_t longest = kLongestRecord;  // A longer record of a stream is damage.
  bool strict = true;                    // A text without a required field is an error.
  bool follow = false;                   // Wait for more of a stream at its end, until Ctrl-C.
  // Called before the tool waits for more of a stream. May be empty.
  std::function<void()> before_wait;
};

// The type with this name. Throws Error if there is none.
const google::protobuf::Descriptor* TypeNamed(const std::string& type);
// Reports the inferred type and the reason on standard error. Throws Error if there is none.
const google::protobuf::Descriptor* ReportInferred(const std::string& name, InputForm form,
                                                   const InferredType& inferred);

// One message of an input, or one damaged place.
struct Record {
  std::uint64_t number = 0;  // From 1.
  // Where the bytes begin, in the input or in the decoded bytes of hexadecimal text. For JSON where
  // the line begins. For damage where the length begins.
  std::uint64_t offset = 0;
  // In the wire format, whatever the form of the input. Valid until the next call of Next(). Empty
  // for damage.
  std::string_view bytes;
  // Why there are no bytes.
  std::optional<Problem> damage;
};

class Input {
 public:
  // Opens the file, infers form and type if they are not given, and reports what it inferred on
  // standard error. Throws Error.
  explicit Input(const InputOptions& options);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  const std::string& name() const { return name_; }
  bool delimited() const { return delimited_; }
  // Whether an offset in a message is an offset in the input.
  bool has_offsets() const { return form_ == InputForm::kWire || form_ == InputForm::kHex; }
  const google::protobuf::Descriptor& type() const { return *type_; }
  // The size of the input in bytes, 0 if it is not known; and how many bytes have been read.
  std::uint64_t size() const { return size_; }
  std::uint64_t consumed() const;

  // Reads the next record or damaged place. Returns false at the end, also after damage from which
  // no record can be found.
  bool Next(Record& record);

  // Whether Next() will return false.
  bool AtEnd() const { return ended_ && !read_ahead_; }

  // Whether reading the input failed before its end.
  bool CannotRead() const { return stream_ && stream_->cannot_read(); }

  // Replaces the message by the record's, as far as it can be parsed. Returns why the bytes are no
  // message of the type, with an offset in the input.
  std::optional<Problem> Parse(const Record& record, google::protobuf::Message& message) const;

  // The verdict on the record's message, with the offset in the input.
  Problem Locate(const Record& record, const zorl2::check::Verdict& verdict) const;

  // Throws the problem as an error of this input.
  [[noreturn]] void Fail(const Problem& problem) const { throw Error(name_, problem); }

 private:
  void Open(const InputOptions& options);
  void OpenStream(const InputOptions& options);
  void RecogniseStreamForm(const InputOptions& options);
  // Throws Error: nothing separates messages in protobuf text.
  [[noreturn]] void RejectTextStream() const;
  // Throws Error if the beginning of a stream is one message without its length.
  void RejectSingleMessage(std::string_view bytes);
  // Makes a record from a line of JSON.
  void TakeLine(std::string_view line, Record& record);
  void ReadWhole(const InputOptions& options);
  // Throws Error for bytes that are no message but something else that the tool recognises, and for
  // a message of another type than the requested one.
  void RejectMistakes(const std::string& file, std::string_view content, std::string_view bytes);

  std::string name_;
  InputForm form_;
  bool delimited_;
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
  const google::protobuf::Descriptor* type_ = nullptr;
  // For a stream. Its first record may have been read ahead.
  std::unique_ptr<RecordStream> stream_;
  bool read_ahead_ = false;
  bool ended_ = false;
  Record ahead_;
  std::uint64_t line_ = 0;
  // One message, or that of the last line.
  std::string bytes_;
  std::optional<Problem> missing_;  // The required field that a text does not have.
  std::uint64_t next_number_ = 1;
};

}  // namespace zorl2_inspect
