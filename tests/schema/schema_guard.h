// Compares two versions of the wire schema the way a peer sees them.
#pragma once

#include <google/protobuf/descriptor.pb.h>

#include <string>
#include <vector>

struct SchemaDifferences {
  // Changes that break a peer that was built with the released schema. One sentence for each says
  // what changed, how it affects the peer, and what to do.
  std::vector<std::string> breaking;
  // Changes that affect no peer and that the released description does not have yet.
  std::vector<std::string> additions;
};

SchemaDifferences CompareSchemas(const google::protobuf::FileDescriptorSet& released,
                                 const google::protobuf::FileDescriptorSet& current);

// The sentences, one on a line.
std::string SchemaLines(const std::vector<std::string>& sentences);

// What to do about either kind.
inline constexpr char kAcceptBreak[] =
    "If every peer is meant to change with it, raise the major version of the project, run "
    "scripts/accept-schema and say so in CHANGELOG.md.";
inline constexpr char kAcceptAddition[] =
    "Run scripts/accept-schema and add the new lines to docs/mapping.md.";
