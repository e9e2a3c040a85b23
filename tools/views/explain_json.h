// An explained message as JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/text/error.h"
#include "tools/text/json_writer.h"
#include "tools/views/explain_rows.h"

namespace zorl2_inspect {

// Writes one object for each message. The form is that of schema/explain.schema.json.
class ExplainJson : public ExplainRows {
 public:
  // Each message of a stream is on one line.
  ExplainJson(Output& out, bool of_stream);

  // `record` is 0 for a message that is not in a stream.
  void Begin(const std::string& file, const std::string& type, std::uint64_t record,
             std::uint64_t offset, std::uint64_t bytes);
  void Print(const ExplainRow& row) override;
  // Ends the object with the reasons why the runtime cannot parse the message and why the
  // conversion would reject it.
  void End(const std::optional<Problem>& damage, const std::optional<Problem>& rejection);

 private:
  void Value(const ExplainRow& row);

  JsonWriter json_;
};

}  // namespace zorl2_inspect
