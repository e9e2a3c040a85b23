#include "tools/wire/wire_find.h"

#include <algorithm>

#include "tools/wire/wire_type.h"
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

std::string_view MessagePath(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : path.substr(0, dot);
}

class FieldOffsets::Finder : public WireVisitor {
 public:
  explicit Finder(FieldOffsets& found) : places_(found.places_) {}

  void OnField(const WireField& field) override {
    Add(field.path, field.offset);
    if (!field.path.empty() && field.path.back() == ']') {
      AddFirst(field.path.substr(0, field.path.rfind('[')), field.offset);
    }
    const bool is_varint = field.wire_type == kVarint || field.kind == WireField::Kind::kElement;
    if (field.field != nullptr && !(is_varint && IsUnlisted(*field.field, field.value))) return;
    std::string unknown(MessagePath(field.path));
    if (!unknown.empty()) unknown += '.';
    unknown += '#' + std::to_string(field.number);
    if (unknown != field.path) Add(unknown, field.offset);
  }
  void OnEnd(const WireField&, std::size_t) override {}
  void OnError(const Problem&) override {}

 private:
  void Add(std::string_view path, std::size_t offset) {
    const auto place = places_.find(path);
    if (place != places_.end()) place->second.offsets.push_back(offset);
  }
  void AddFirst(std::string_view path, std::size_t offset) {
    const auto place = places_.find(path);
    if (place != places_.end() && place->second.offsets.empty()) Add(path, offset);
  }

  std::map<std::string, Place, std::less<>>& places_;
};

FieldOffsets::FieldOffsets(std::string_view bytes, const google::protobuf::Descriptor& type,
                           const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    for (std::string_view part = path; !part.empty(); part = MessagePath(part)) {
      if (!places_.try_emplace(std::string(part)).second) break;
    }
  }
  Finder finder(*this);
  WalkWire(bytes, type, 0, finder);
}

std::optional<std::size_t> FieldOffsets::Take(const std::string& path) {
  const auto found = places_.find(path);
  if (found == places_.end() || found->second.offsets.empty()) return std::nullopt;
  Place& place = found->second;
  const std::string_view name = std::string_view(path).substr(path.rfind('.') + 1);
  if (name[0] == '#') {
    const std::size_t next = std::min(place.taken++, place.offsets.size() - 1);
    return place.offsets[next];
  }
  return place.offsets.back();
}

std::size_t FieldOffsets::Near(const std::string& path) const {
  for (std::string_view part = path; !part.empty(); part = MessagePath(part)) {
    const auto place = places_.find(part);
    if (place != places_.end() && !place->second.offsets.empty()) {
      return place->second.offsets.back();
    }
  }
  return 0;
}

}  // namespace zorl2_inspect
