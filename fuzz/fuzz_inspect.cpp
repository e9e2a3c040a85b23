// Runs the readers of zorl2-inspect on hostile files. The first byte of an input is the type of its
// messages (0: inferred), the second its form and whether it is a stream; the rest is the file.
#include <google/protobuf/util/message_differencer.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "fuzz/harness.h"
#include "tools/input/input.h"
#include "tools/input/message_text.h"
#include "tools/model/message_forms.h"
#include "tools/model/message_types.h"
#include "tools/text/error.h"
#include "tools/wire/wire_walker.h"

namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

// Discards standard error, where the tool reports the inferred type. LibFuzzer keeps the real one.
class Quiet {
 public:
  Quiet() : loud_(stderr) {
    static std::FILE* const nowhere = std::fopen("/dev/null", "w");
    stderr = nowhere;
  }
  ~Quiet() { stderr = loud_; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  std::FILE* loud_;
};

// A file in memory, with a name that the tool can open.
class File {
 public:
  explicit File(std::string_view content) : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    const ssize_t put = write(descriptor_, content.data(), content.size());
    if (put != static_cast<ssize_t>(content.size())) proof::Require("no file in memory");
  }
  ~File() { close(descriptor_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

int LowestFreeDescriptor() {
  const int descriptor = dup(STDERR_FILENO);
  close(descriptor);
  return descriptor;
}

// A dump may repeat a line up to an offset of 512 MiB. The memory for this is no finding.
bool RepeatsTooMuch(std::string_view content) {
  for (std::size_t at = content.find('*'); at != content.npos; at = content.find('*', at + 1)) {
    const std::string offset(content.substr(at + 1, 80));
    if (std::strtoull(offset.c_str(), nullptr, 16) > 0x10000) return true;
  }
  return false;
}

class ErrorCount : public zorl2_inspect::WireVisitor {
 public:
  void OnField(const zorl2_inspect::WireField&) override {}
  void OnEnd(const zorl2_inspect::WireField&, std::size_t) override {}
  void OnError(const zorl2_inspect::Problem&) override { ++errors; }
  int errors = 0;
};

// Whether JSON and the text format can hold the whole message. The text format accepts any bytes in
// texts.
struct Holds {
  bool json = true;
  bool text = true;
};

void Look(const Message& message, Holds& holds) {
  const auto& reflection = *message.GetReflection();
  if (!reflection.GetUnknownFields(message).empty()) holds = {false, false};
  std::vector<const FieldDescriptor*> fields;
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    const int count = field->is_repeated() ? reflection.FieldSize(message, field) : 1;
    for (int i = 0; i < count; ++i) {
      if (field->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
        Look(field->is_repeated() ? reflection.GetRepeatedMessage(message, field, i)
                                  : reflection.GetMessage(message, field),
             holds);
      } else if (field->type() == FieldDescriptor::TYPE_STRING) {
        const std::string text = field->is_repeated()
                                     ? reflection.GetRepeatedString(message, field, i)
                                     : reflection.GetString(message, field);
        if (!google::protobuf::internal::IsStructurallyValidUTF8(text.data(),
                                                                 static_cast<int>(text.size()))) {
          holds.json = false;
        }
      }
    }
  }
}

void RequireSame(const Message& message, const std::string& bytes, const char* what) {
  const auto again = zorl2_inspect::NewMessage(*message.GetDescriptor());
  if (!again->ParseFromString(bytes) ||
      !google::protobuf::util::MessageDifferencer::Equals(message, *again)) {
    proof::Require(std::string(what) + " changes " + proof::Hex(message.SerializeAsString()) +
                   " to " + proof::Hex(bytes));
  }
}

// Requires that the wire walker and the runtime's parser agree on the bytes.
bool Walk(std::string_view bytes, const google::protobuf::Descriptor& type) {
  ErrorCount count;
  const bool whole = zorl2_inspect::WalkWire(bytes, type, 0, count);
  const bool parsed = zorl2_inspect::NewMessage(type)->ParsePartialFromArray(
      bytes.data(), static_cast<int>(bytes.size()));
  if (whole != parsed || whole != (count.errors == 0)) {
    proof::Require("the walk " + std::string(whole ? "accepts" : "rejects") +
                   " what the runtime does not: " + type.name() + " " +
                   proof::Hex(std::string(bytes)));
  }
  return parsed;
}

std::string ReadAgain(const zorl2_inspect::MessageText& text,
                      const google::protobuf::Descriptor& type) {
  return zorl2_inspect::ReadMessage(text, type)->SerializeAsString();
}

std::string ToJson(const Message& message, zorl2_inspect::JsonWriter::Layout layout) {
  std::string json;
  zorl2_inspect::Output output(&json);
  zorl2_inspect::JsonWriter writer(output, layout);
  zorl2_inspect::WriteJson(message, writer);
  output.Finish();
  return json;
}

void CheckForms(const Message& message) {
  RequireSame(message, message.SerializeAsString(), "the wire format");
  Holds holds;
  Look(message, holds);
  const auto& type = *message.GetDescriptor();
  for (const auto layout : {zorl2_inspect::JsonWriter::Layout::kOneLine,
                            zorl2_inspect::JsonWriter::Layout::kIndented}) {
    const std::string json = ToJson(message, layout);
    if (holds.json) RequireSame(message, ReadAgain({"JSON", json, true}, type), "JSON");
  }
  const std::string text = zorl2_inspect::ToText(message);
  if (holds.text) RequireSame(message, ReadAgain({"text", text, false}, type), "text");
}

void ReadRecords(const zorl2_inspect::InputOptions& options) {
  std::unique_ptr<zorl2_inspect::Input> input;
  zorl2_inspect::Record record;
  const auto next = [&] {
    const Quiet quiet;
    try {
      if (input == nullptr) input = std::make_unique<zorl2_inspect::Input>(options);
      return input->Next(record);
    } catch (const zorl2_inspect::Error&) {
      return false;
    }
  };
  while (next()) {
    if (record.damage) continue;
    const bool whole = Walk(record.bytes, input->type());
    const auto message = zorl2_inspect::NewMessage(input->type());
    const bool accepted = !input->Parse(record, *message);
    if (accepted != whole) {
      proof::Require(whole ? "a whole message is rejected" : "a damaged message is accepted");
    }
    // Compares the forms only for messages with their required fields.
    if (!accepted || !message->IsInitialized()) continue;
    CheckForms(*message);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  proof::Silence();
  if (size < 2) return 0;
  const std::string_view content(reinterpret_cast<const char*>(data) + 2, size - 2);
  if (RepeatsTooMuch(content)) return 0;

  zorl2_inspect::InputOptions options;
  const auto& types = zorl2_inspect::MessageTypes();
  const std::size_t type = data[0] % (types.size() + 1);
  if (type > 0) options.type = types[type - 1]->name();
  using Form = zorl2_inspect::InputForm;
  constexpr Form kForms[] = {Form::kInferred, Form::kWire, Form::kHex, Form::kJson, Form::kText};
  options.form = kForms[data[1] % 5];
  options.delimited = data[1] >= 128;

  const int before = LowestFreeDescriptor();
  {
    const File file(content);
    options.file = file.name();
    ReadRecords(options);
  }
  if (LowestFreeDescriptor() != before) proof::Require("a file stays open");
  return 0;
}
