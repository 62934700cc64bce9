#include <gtest/gtest.h>

#include <sstream>

#include "tools/qzxml/Progress.h"

namespace {

using qztool::CProgress;
using std::chrono::milliseconds;

TEST(Progress, ShowsALineAfterASecondTenTimesASecondAndWipesIt) {
  milliseconds now(5000);
  std::ostringstream stream;
  {
    CProgress progress(stream, true, [&now] { return now; });
    progress.Begin("reading a.xml");
    now = milliseconds(6000);
    progress.Tell(1, 100);
    EXPECT_EQ("", stream.str());
    now = milliseconds(6001);
    progress.Tell(45, 100);
    EXPECT_EQ("qzxml: reading a.xml: 45 %", stream.str());
    stream.str("");
    now = milliseconds(6101);
    progress.Tell(50, 100);
    EXPECT_EQ("", stream.str());
    progress.Begin("writing b.fi");
    now = milliseconds(6102);
    progress.Tell(7, 0);
    EXPECT_EQ("\r" + std::string(26, ' ') + "\rqzxml: writing b.fi", stream.str());
    stream.str("");
  }
  EXPECT_EQ("\r" + std::string(19, ' ') + "\r", stream.str());
}

TEST(Progress, IsQuietWhereNobodyLooks) {
  milliseconds now(0);
  std::ostringstream stream;
  {
    CProgress progress(stream, false, [&now] { return now; });
    progress.Begin("reading a.xml");
    now = milliseconds(60000);
    progress.Tell(1, 2);
  }
  EXPECT_EQ("", stream.str());
}

}  // namespace
