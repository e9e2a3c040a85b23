// Runs one operation again and again, the first time with its first allocation failing, then with
// its second, until it succeeds.
#pragma once

#include <google/protobuf/message.h>
#include <gtest/gtest.h>

#include <new>

#include "tests/reliability/failing_new.h"

namespace proof {

// fresh() makes the destination, operate(destination) is what fails, check(destination, failed)
// states what the destination then holds. After each failure the operation is run once more on the
// same destination and must succeed. Returns the number of failures.
template <typename Fresh, typename Operate, typename Check>
long ExhaustOnce(Fresh fresh, Operate operate, Check check, bool countLive) {
  for (long n = 1;; ++n) {
    const long before = LiveAllocations();
    bool threw = false;
    {
      auto destination = fresh();
      FailAllocation(n);
      try {
        operate(destination);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      const bool failed = StopFailing();
      EXPECT_EQ(threw, failed) << "allocation " << n << " failed unnoticed";
      SCOPED_TRACE("allocation " + std::to_string(n));
      check(destination, threw);
      if (threw) {
        operate(destination);
        check(destination, false);
      }
    }
    if (countLive) {
      EXPECT_EQ(LiveAllocations(), before) << "leaked at allocation " << n;
    }
    if (!threw || testing::Test::HasFailure()) return n - 1;
  }
}

// Twice: what a first run allocates for good, a table or a descriptor, is not lost.
template <typename Fresh, typename Operate, typename Check>
long Exhaust(Fresh fresh, Operate operate, Check check) {
  ExhaustOnce(fresh, operate, check, false);
  if (testing::Test::HasFailure()) return -1;
  return ExhaustOnce(fresh, operate, check, true);
}

// Whatever is present in the part is present in the whole with the same value. The field that
// failed may be present and empty.
inline bool IsPartOf(const google::protobuf::Message& part,
                     const google::protobuf::Message& whole) {
  using google::protobuf::FieldDescriptor;
  const auto& reflection = *part.GetReflection();
  std::vector<const FieldDescriptor*> fields;
  reflection.ListFields(part, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->is_repeated()) {
      const int size = reflection.FieldSize(part, field);
      if (size > reflection.FieldSize(whole, field)) return false;
      if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) {
        for (int i = 0; i < size; ++i) {
          if (field->cpp_type() == FieldDescriptor::CPPTYPE_ENUM
                  ? reflection.GetRepeatedEnumValue(part, field, i) !=
                        reflection.GetRepeatedEnumValue(whole, field, i)
                  : reflection.GetRepeatedUInt32(part, field, i) !=
                        reflection.GetRepeatedUInt32(whole, field, i)) {
            return false;
          }
        }
        continue;
      }
      for (int i = 0; i < size; ++i) {
        if (!IsPartOf(reflection.GetRepeatedMessage(part, field, i),
                      reflection.GetRepeatedMessage(whole, field, i))) {
          return false;
        }
      }
      continue;
    }
    if (!reflection.HasField(whole, field)) return false;
    bool same = true;
    switch (field->cpp_type()) {
      case FieldDescriptor::CPPTYPE_MESSAGE:
        same = IsPartOf(reflection.GetMessage(part, field), reflection.GetMessage(whole, field));
        break;
      case FieldDescriptor::CPPTYPE_STRING: {
        const std::string text = reflection.GetString(part, field);
        same = text.empty() || text == reflection.GetString(whole, field);
        break;
      }
      case FieldDescriptor::CPPTYPE_ENUM:
        same = reflection.GetEnumValue(part, field) == reflection.GetEnumValue(whole, field);
        break;
      case FieldDescriptor::CPPTYPE_BOOL:
        same = reflection.GetBool(part, field) == reflection.GetBool(whole, field);
        break;
      case FieldDescriptor::CPPTYPE_UINT32:
        same = reflection.GetUInt32(part, field) == reflection.GetUInt32(whole, field);
        break;
      default:
        same = reflection.GetUInt64(part, field) == reflection.GetUInt64(whole, field);
    }
    if (!same) return false;
  }
  return true;
}

}  // namespace proof
