// The required fields of a message, found by walking its descriptors, so that a field added to the
// schema is tested without a change here.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>
#include <vector>

namespace zorl2_test {

// The path from a message to one of its fields; an index of -1 marks a singular field.
struct FieldPath {
  struct Step {
    const google::protobuf::FieldDescriptor* field;
    int index;
  };
  std::vector<Step> steps;

  // As in "blockInfo[1].state".
  std::string Name() const {
    std::string name;
    for (const Step& step : steps) {
      if (!name.empty()) name += ".";
      name += step.field->name();
      if (step.index >= 0) name += "[" + std::to_string(step.index) + "]";
    }
    return name;
  }
};

inline void CollectRequiredFields(const google::protobuf::Message& message, const FieldPath& above,
                                  std::vector<FieldPath>& paths) {
  using google::protobuf::FieldDescriptor;
  const google::protobuf::Reflection& reflection = *message.GetReflection();
  for (int i = 0; i < message.GetDescriptor()->field_count(); ++i) {
    const FieldDescriptor* field = message.GetDescriptor()->field(i);
    FieldPath path = above;
    path.steps.push_back({field, -1});
    if (field->is_required()) paths.push_back(path);
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    if (!field->is_repeated()) {
      if (reflection.HasField(message, field)) {
        CollectRequiredFields(reflection.GetMessage(message, field), path, paths);
      }
      continue;
    }
    for (int element = 0; element < reflection.FieldSize(message, field); ++element) {
      path.steps.back().index = element;
      CollectRequiredFields(reflection.GetRepeatedMessage(message, field, element), path, paths);
    }
  }
}

// Returns every required field of the message and of all messages in it, including repeated
// elements. A required nested message comes before its fields.
inline std::vector<FieldPath> RequiredFields(const google::protobuf::Message& message) {
  std::vector<FieldPath> paths;
  CollectRequiredFields(message, {}, paths);
  return paths;
}

// Removes one field.
inline void RemoveField(const FieldPath& path, google::protobuf::Message& message) {
  google::protobuf::Message* at = &message;
  for (std::size_t i = 0; i + 1 < path.steps.size(); ++i) {
    const FieldPath::Step& step = path.steps[i];
    const google::protobuf::Reflection& reflection = *at->GetReflection();
    at = step.index < 0 ? reflection.MutableMessage(at, step.field)
                        : reflection.MutableRepeatedMessage(at, step.field, step.index);
  }
  at->GetReflection()->ClearField(at, path.steps.back().field);
}

}  // namespace zorl2_test
