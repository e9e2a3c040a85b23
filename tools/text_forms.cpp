#include "tools/text_forms.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/json_util.h>
#include <google/protobuf/util/type_resolver.h>
#include <google/protobuf/util/type_resolver_util.h>

#include <memory>
#include <stdexcept>

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;

constexpr char kUrlPrefix[] = "zorl2";

google::protobuf::util::TypeResolver& Resolver() {
  static const std::unique_ptr<google::protobuf::util::TypeResolver> resolver(
      google::protobuf::util::NewTypeResolverForDescriptorPool(
          kUrlPrefix, google::protobuf::DescriptorPool::generated_pool()));
  return *resolver;
}

std::string Url(const Message& message) {
  return fmt::format("{}/{}", kUrlPrefix, message.GetDescriptor()->full_name());
}

}  // namespace

std::string ToJson(const Message& message, bool pretty) {
  google::protobuf::util::JsonPrintOptions options;
  options.add_whitespace = pretty;
  options.preserve_proto_field_names = true;
  std::string wire = message.SerializePartialAsString();
  std::string json;
  google::protobuf::io::ArrayInputStream in(wire.data(), static_cast<int>(wire.size()));
  google::protobuf::io::StringOutputStream out(&json);
  const auto status =
      google::protobuf::util::BinaryToJsonStream(&Resolver(), Url(message), &in, &out, options);
  if (!status.ok()) throw std::runtime_error("JSON: " + status.message().ToString());
  if (json.empty() || json.back() != '\n') json += '\n';
  return json;
}

std::string ToText(const Message& message) {
  google::protobuf::TextFormat::Printer printer;
  printer.SetUseUtf8StringEscaping(true);
  std::string text;
  printer.PrintToString(message, &text);
  return text;
}

}  // namespace zorl2_inspect
