// Boost.Serialization: its binary archive, which is not portable. Members are archived one by one,
// because a whole class would add a version and object tracking.
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>

#include "bench/peers/archive_peer.h"

std::unique_ptr<zorl2_peers::Peer> zorl2_peers::MakeBoost() {
  return std::make_unique<
      ArchivePeer<boost::archive::binary_oarchive, boost::archive::binary_iarchive>>();
}
