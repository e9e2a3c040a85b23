#include "schema/schema_guard.h"

#include <map>
#include <set>

namespace gp = google::protobuf;

namespace {

struct Enumeration {
  std::string file;
  gp::EnumDescriptorProto proto;
};

struct Message {
  std::string file;
  gp::DescriptorProto proto;
};

// One version of the schema, by full name.
struct Schema {
  std::map<std::string, const gp::FileDescriptorProto*> files;
  std::map<std::string, Message> messages;
  std::map<std::string, Enumeration> enumerations;
};

void AddMessage(const std::string& scope, const std::string& file, const gp::DescriptorProto& proto,
                Schema& schema) {
  const std::string name = scope + "." + proto.name();
  schema.messages[name] = {file, proto};
  for (const auto& nested : proto.nested_type()) AddMessage(name, file, nested, schema);
  for (const auto& nested : proto.enum_type()) {
    schema.enumerations[name + "." + nested.name()] = {file, nested};
  }
}

Schema Index(const gp::FileDescriptorSet& set) {
  Schema schema;
  for (const auto& file : set.file()) {
    schema.files[file.name()] = &file;
    for (const auto& message : file.message_type()) {
      AddMessage(file.package(), file.name(), message, schema);
    }
    for (const auto& enumeration : file.enum_type()) {
      schema.enumerations[file.package() + "." + enumeration.name()] = {file.name(), enumeration};
    }
  }
  return schema;
}

std::string Label(const gp::FieldDescriptorProto& field) {
  switch (field.label()) {
    case gp::FieldDescriptorProto::LABEL_REQUIRED:
      return "required";
    case gp::FieldDescriptorProto::LABEL_REPEATED:
      return "repeated";
    default:
      return "optional";
  }
}

bool Required(const gp::FieldDescriptorProto& field) {
  return field.label() == gp::FieldDescriptorProto::LABEL_REQUIRED;
}

std::string Type(const gp::FieldDescriptorProto& field) {
  if (!field.type_name().empty()) return field.type_name();
  // TYPE_UINT32 reads uint32.
  std::string name = gp::FieldDescriptorProto::Type_Name(field.type()).substr(5);
  for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return name;
}

class Comparison {
 public:
  Comparison(const gp::FileDescriptorSet& released, const gp::FileDescriptorSet& current)
      : released_(Index(released)), current_(Index(current)) {}

  SchemaDifferences Run() {
    Files();
    Messages();
    Enumerations();
    return std::move(found_);
  }

 private:
  void Break(const std::string& what, const std::string& why, const std::string& remedy) {
    found_.breaking.push_back(what + ": " + why + ". " + remedy + ".");
  }

  void Files() {
    for (const auto& [name, file] : released_.files) {
      const auto now = current_.files.find(name);
      if (now == current_.files.end()) {
        Break(name + " is gone", "programs include its generated header and import it by this name",
              "Put the file back");
      } else if (now->second->package() != file->package()) {
        Break(name + " moved from package " + file->package() + " to " + now->second->package(),
              "every class and every full name in it changes", "Restore the package");
      } else if (now->second->syntax() != file->syntax()) {
        Break(name + " changed its syntax",
              "presence, defaults and closed enumerations would follow other rules",
              "Keep it without a syntax line");
      }
    }
    for (const auto& [name, file] : current_.files) {
      if (released_.files.count(name) == 0) found_.additions.push_back(name + " is new");
    }
  }

  void Messages() {
    for (const auto& [name, message] : released_.messages) {
      const auto now = current_.messages.find(name);
      if (now == current_.messages.end()) {
        Break(message.file + ": message " + name + " is gone",
              "peers go on sending it and programs no longer compile", "Put the message back");
        continue;
      }
      Fields(name, message, now->second);
    }
    for (const auto& [name, message] : current_.messages) {
      if (released_.messages.count(name) == 0) {
        found_.additions.push_back(message.file + ": message " + name + " is new");
      }
    }
  }

  void Fields(const std::string& name, const Message& before, const Message& after) {
    std::map<std::string, const gp::FieldDescriptorProto*> by_name;
    std::map<int, const gp::FieldDescriptorProto*> by_number;
    for (const auto& field : after.proto.field()) {
      by_name[field.name()] = &field;
      by_number[field.number()] = &field;
    }
    std::set<const gp::FieldDescriptorProto*> known;
    for (const auto& field : before.proto.field()) {
      const std::string where = after.file + ": field " + name + "." + field.name();
      const auto same_name = by_name.find(field.name());
      const auto same_number = by_number.find(field.number());
      if (same_name != by_name.end()) {
        known.insert(same_name->second);
        Field(where, field, *same_name->second);
      } else if (same_number != by_number.end()) {
        known.insert(same_number->second);
        Break(where + " (number " + std::to_string(field.number()) + ") is now called " +
                  same_number->second->name(),
              "programs that read it by name and the text form of captures no longer find it",
              "Restore the name; a field with another meaning needs a new number");
      } else {
        Break(where + " (" + Label(field) + ", number " + std::to_string(field.number()) +
                  ") is gone",
              Required(field) ? "a peer rejects every message without this required field"
                              : "what peers send in it is lost in the unknown fields",
              "Put the field back");
      }
    }
    for (const auto& field : after.proto.field()) {
      if (known.count(&field) != 0) continue;
      const std::string where = after.file + ": field " + name + "." + field.name() + " (" +
                                Label(field) + ", number " + std::to_string(field.number()) + ")";
      if (Required(field)) {
        Break(where + " is new and required",
              "messages of every peer that does not know it would be rejected",
              "Make the field optional");
      } else {
        found_.additions.push_back(where + " is new");
      }
    }
  }

  void Field(const std::string& where, const gp::FieldDescriptorProto& before,
             const gp::FieldDescriptorProto& after) {
    if (before.number() != after.number()) {
      Break(where + " changed its number from " + std::to_string(before.number()) + " to " +
                std::to_string(after.number()),
            "a peer looks for it under the old number and reads the new one as something else",
            "Give it its number back");
    }
    if (Type(before) != Type(after)) {
      Break(where + " changed its type from " + Type(before) + " to " + Type(after),
            "the same bytes would mean something else to a peer, or nothing",
            "Restore the type; another type needs a new field with a new number");
    }
    if (before.label() != after.label()) {
      const bool required = Required(before) || Required(after);
      Break(where + " changed from " + Label(before) + " to " + Label(after),
            required ? "one side would reject messages that the other side sends"
                     : "one side would read a single value where the other sends several",
            "Restore the label");
    }
    if (before.default_value() != after.default_value()) {
      Break(where + " changed its default value", "an absent field would read as another value",
            "Restore the default");
    }
    if (before.options().packed() != after.options().packed()) {
      Break(where + " changed between packed and one value at a time",
            "the bytes of every message change", "Restore the option");
    }
  }

  void Enumerations() {
    for (const auto& [name, enumeration] : released_.enumerations) {
      const auto now = current_.enumerations.find(name);
      if (now == current_.enumerations.end()) {
        Break(enumeration.file + ": enumeration " + name + " is gone",
              "peers go on sending its values and programs no longer compile",
              "Put the enumeration back");
        continue;
      }
      Values(name, enumeration, now->second);
    }
    for (const auto& [name, enumeration] : current_.enumerations) {
      if (released_.enumerations.count(name) == 0) {
        found_.additions.push_back(enumeration.file + ": enumeration " + name + " is new");
      }
    }
  }

  void Values(const std::string& name, const Enumeration& before, const Enumeration& after) {
    std::map<std::string, int> now;
    for (const auto& value : after.proto.value()) now[value.name()] = value.number();
    std::set<std::string> known;
    for (const auto& value : before.proto.value()) {
      known.insert(value.name());
      const std::string where = after.file + ": value " + value.name() + " of " + name;
      const auto found = now.find(value.name());
      if (found == now.end()) {
        Break(where + " (number " + std::to_string(value.number()) + ") is gone",
              "a message in which a peer sends it is rejected where the field is required",
              "Put the value back");
      } else if (found->second != value.number()) {
        Break(where + " changed its number from " + std::to_string(value.number()) + " to " +
                  std::to_string(found->second),
              "a peer would read it as another value, or reject the message",
              "Give it its number back; a new meaning needs a new name and a new number");
      }
    }
    for (const auto& value : after.proto.value()) {
      if (known.count(value.name()) != 0) continue;
      Break(after.file + ": value " + value.name() + " of " + name + " (number " +
                std::to_string(value.number()) + ") is new",
            "enumerations are closed: a peer that does not know it sees the field as absent, and "
            "rejects the message where the field is required",
            "Carry the new meaning in a new optional field, or update every peer first and record "
            "the schema as released");
    }
  }

  Schema released_;
  Schema current_;
  SchemaDifferences found_;
};

}  // namespace

SchemaDifferences CompareSchemas(const gp::FileDescriptorSet& released,
                                 const gp::FileDescriptorSet& current) {
  return Comparison(released, current).Run();
}

std::string SchemaLines(const std::vector<std::string>& sentences) {
  std::string text;
  for (const std::string& sentence : sentences) text += "  " + sentence + "\n";
  return text;
}
