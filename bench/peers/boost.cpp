// Boost.Serialization: its binary archive, which is not portable. A class that is handed to an
// archive as a whole would add a version and object tracking.
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>

#include "bench/peers/archive_peer.h"

std::unique_ptr<zorl2_peers::Peer> zorl2_peers::MakeBoost() {
  return std::make_unique<
      ArchivePeer<boost::archive::binary_oarchive, boost::archive::binary_iarchive>>();
}
