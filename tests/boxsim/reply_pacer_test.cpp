#include "boxsim/reply_pacer.h"

#include <gtest/gtest.h>

namespace nbx::boxsim {
namespace {

using Writes = std::vector<std::string>;

TEST(ReplyPacer, BytesGoOutAsTheLineWouldCarryThem) {
  ReplyPacer pacer;
  pacer.Push("abc", 100, Delivery{1000, false});  // 10 bits a byte: 10 ms
  EXPECT_NEAR(pacer.NextDueSeconds().value_or(0), 100.01, 1e-9);
  EXPECT_TRUE(pacer.TakeDue(100.005).empty());
  EXPECT_EQ(pacer.TakeDue(100.0201), (Writes{"ab"}));

  // A reply pushed while one is still going follows it.
  pacer.Push("d", 100.021, Delivery{1000, false});
  EXPECT_EQ(pacer.TakeDue(100.0301), (Writes{"c"}));
  EXPECT_TRUE(pacer.TakeDue(100.035).empty());
  EXPECT_EQ(pacer.TakeDue(100.0401), (Writes{"d"}));
  EXPECT_TRUE(pacer.Empty());

  // Byte by byte: each byte alone; a fast line: all at once.
  pacer.Push("abc", 0, Delivery{0, true});
  EXPECT_EQ(pacer.TakeDue(1), (Writes{"a", "b", "c"}));
  pacer.Push("abc", 5, Delivery{0, true});
  EXPECT_EQ(pacer.TakeDue(5.0041), (Writes{"a", "b"}));

  pacer.Clear();
  pacer.Push("xyz", 6, Delivery{});
  EXPECT_EQ(pacer.TakeDue(6), (Writes{"xyz"}));

  // Bytes a full line did not take go out first next time.
  pacer.Push("tail", 7, Delivery{});
  pacer.PutBack("yz", 7.5);
  EXPECT_EQ(pacer.TakeDue(7.5), (Writes{"yztail"}));
}

}  // namespace
}  // namespace nbx::boxsim
