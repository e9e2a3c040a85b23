// Runs a harness on files and on the files of directories, for builds without a fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

static void Replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int main(int argc, char** argv) {
  int replayed = 0;
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::is_directory(argv[i])) {
      Replay(argv[i]);
      ++replayed;
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      Replay(entry.path());
      ++replayed;
    }
  }
  std::printf("%d inputs\n", replayed);
  // Replaying nothing proves nothing.
  return replayed == 0 ? 1 : 0;
}
