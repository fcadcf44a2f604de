#include "tools/launch_console/Output.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

using LaunchConsole::Output;
using LaunchConsole::Record;

namespace {

/// Tells what had been written at each flush.
class FlushRecorder : public std::stringbuf {
public:
    std::vector<std::string> flushed;

protected:
    int sync() override {
        flushed.push_back(str());
        return 0;
    }
};

std::string Written(const Record& record) {
    std::ostringstream stream;
    Output(stream).Write(record);
    return stream.str();
}

}  // namespace

TEST(Output, OneLineARecordInTheOrderOfItsFields) {
    EXPECT_EQ(Written({{"zeta", 1}, {"alpha", true}, {"list", Record::array()}}),
              "{\"zeta\":1,\"alpha\":true,\"list\":[]}\n");
}

TEST(Output, EachLineIsFlushed) {
    FlushRecorder recorder;
    std::ostream stream(&recorder);
    Output output(stream);
    output.Write({{"a", 1}});
    output.Write({{"b", 2}});
    EXPECT_EQ(recorder.flushed, (std::vector<std::string>{"{\"a\":1}\n", "{\"a\":1}\n{\"b\":2}\n"}));
}

TEST(Output, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
    EXPECT_EQ(Written({{"value", "a\xFFz"}}), "{\"value\":\"a\xEF\xBF\xBDz\"}\n");
}

TEST(Output, SurrogateThatStandsAloneBecomesTheReplacementCharacter) {
    EXPECT_EQ(LaunchConsole::Text(std::wstring(1, static_cast<wchar_t>(0xDCFF))), "\xEF\xBF\xBD");
}

TEST(Output, LineBreaksInsideTextDontBreakTheLine) {
    EXPECT_EQ(Written({{"value", "a\nb\0c"}}), "{\"value\":\"a\\nb\"}\n");
}
