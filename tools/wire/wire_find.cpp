#include "tools/wire/wire_find.h"

#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {
namespace {

class ErrorFinder : public WireVisitor {
 public:
  void OnField(const WireField&) override {}
  void OnEnd(const WireField&, std::size_t) override {}
  void OnError(const Problem& problem) override {
    if (!found.has_value()) found = problem;
  }

  std::optional<Problem> found;
};

// Whether the message or field at `outer` contains the one at `path`.
bool Contains(std::string_view outer, std::string_view path) {
  if (path.substr(0, outer.size()) != outer) return false;
  const std::string_view rest = path.substr(outer.size());
  return rest.empty() || rest[0] == '.' || rest[0] == '[';
}

class OffsetFinder : public WireVisitor {
 public:
  explicit OffsetFinder(std::string_view path) : path_(path) {}

  void OnField(const WireField& field) override {
    if (field.path.size() < depth_ || !Contains(field.path, path_)) return;
    depth_ = field.path.size();
    offset = field.offset;
  }
  void OnEnd(const WireField&, std::size_t) override {}
  void OnError(const Problem&) override {}

  std::size_t offset = 0;

 private:
  std::string_view path_;
  std::size_t depth_ = 0;
};

}  // namespace

std::optional<Problem> FirstWireError(std::string_view bytes,
                                      const google::protobuf::Descriptor& type) {
  ErrorFinder finder;
  WalkWire(bytes, type, 0, finder);
  return std::move(finder.found);
}

std::size_t OffsetOf(std::string_view bytes, const google::protobuf::Descriptor& type,
                     std::string_view path) {
  OffsetFinder finder(path);
  WalkWire(bytes, type, 0, finder);
  return finder.offset;
}

}  // namespace zorl2_inspect
