// The conversions of docs/mapping.md: message to a fresh native record and back.
#pragma once

#include <google/protobuf/message.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct RoundTrip {
  // An initialised message of the type, with an element in every list.
  std::shared_ptr<google::protobuf::Message> sample;
  // False if the conversion to native rejects the message.
  std::function<bool(const google::protobuf::Message&, google::protobuf::Message&)> run;
};

// One for each message type that has a converter.
const std::vector<RoundTrip>& RoundTrips();

struct EnumRoundTrip {
  std::string name;
  // Translate a number in either direction. Both may throw.
  std::function<int(int)> to_native;
  std::function<int(int)> to_message;
};

// One for each enumeration that has a native counterpart.
const std::vector<EnumRoundTrip>& EnumRoundTrips();
