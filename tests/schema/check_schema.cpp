// check_schema RELEASED.txtpb CURRENT.desc: the schema test as a program without message classes.
// It works even if the library no longer compiles with a changed schema.
#include <google/protobuf/text_format.h>

#include <fstream>
#include <iostream>
#include <sstream>

#include "schema/schema_guard.h"

namespace gp = google::protobuf;

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: check_schema RELEASED.txtpb CURRENT.desc\n";
    return 2;
  }
  std::ifstream released_file(argv[1]);
  std::ostringstream text;
  text << released_file.rdbuf();
  gp::FileDescriptorSet released;
  std::ifstream current_file(argv[2], std::ios::binary);
  gp::FileDescriptorSet current;
  if (!released_file || !gp::TextFormat::ParseFromString(text.str(), &released) || !current_file ||
      !current.ParseFromIstream(&current_file)) {
    std::cerr << "check_schema: cannot read " << argv[1] << " and " << argv[2] << "\n";
    return 2;
  }
  const SchemaDifferences found = CompareSchemas(released, current);
  if (!found.breaking.empty()) {
    std::cerr << "The wire schema no longer fits what is released:\n"
              << SchemaLines(found.breaking) << kAcceptBreak << "\n";
  }
  if (!found.additions.empty()) {
    std::cerr << "These additions affect no peer, but nothing guards them yet:\n"
              << SchemaLines(found.additions) << kAcceptAddition << "\n";
  }
  if (!found.breaking.empty() || !found.additions.empty()) return 1;
  std::cout << "The wire schema is the released one.\n";
  return 0;
}
