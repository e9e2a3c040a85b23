// cereal: its binary archive, which is not portable.
#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>

#include "bench/peers/archive_peer.h"

std::unique_ptr<zorl2_peers::Peer> zorl2_peers::MakeCereal() {
  return std::make_unique<ArchivePeer<cereal::BinaryOutputArchive, cereal::BinaryInputArchive>>();
}
