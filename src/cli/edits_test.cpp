#include "cli/edits.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

// "2:Menu/Open=Openen", then "!3: message" for a line that is no edit.
std::string dump(const Edits& edits) {
    std::string all;
    for (const Edit& edit : edits.edits) {
        all += std::to_string(edit.line) + ":" + toUtf8(edit.section) + "/" + toUtf8(edit.key) +
               "=" + toUtf8(edit.translation) + " ";
    }
    if (edits.error) {
        all += "!" + std::to_string(edits.error->line) + ": " + toUtf8(edits.error->message);
    }
    return all;
}

TEST(parseEdits, ReadsLinesUpToTheFirstThatIsNone) {
    constexpr const char* kGood = R"({"section":"S","key":"k","translation":"x"})";
    const struct {
        std::string bytes;
        const char* edits;
    } kCases[] = {
        {"", ""},
        {"\n \t\r\n\n", ""},
        {kGood, "1:S/k=x "},
        {std::string("\n") + kGood + "\r\n\r\n  " + kGood + "  \n", "2:S/k=x 4:S/k=x "},
        {R"({"translation":"","note":[{"key":1}],"key":" K\t","section":""})", "1:/ K\t= "},
        {R"({"section":"\u00c4","key":"\ud83d\ude00","translation":"\u0000a"})",
         "1:\xC3\x84/\xF0\x9F\x98\x80="},
        {std::string(kGood) + "\n{\n" + kGood, "1:S/k=x !2: this is no JSON object in UTF-8"},
        {std::string(kGood) + kGood, "!1: this is no JSON object in UTF-8"},
        {"[]", "!1: this is no JSON object in UTF-8"},
        {"\"section\"", "!1: this is no JSON object in UTF-8"},
        {std::string(100'000, '['), "!1: this is no JSON object in UTF-8"},
        {"\xEF\xBB\xBF", ""},
        {std::string("\xEF\xBB\xBF\r\n") + kGood, "2:S/k=x "},
        {kGood + std::string("\0", 1), "!1: this is no JSON object in UTF-8"},
        {kGood + std::string("\0x\n", 3) + kGood, "!1: this is no JSON object in UTF-8"},
        {R"({"section":"S","key":"l","translation":"x","key":"k"})", "1:S/k=x "},
        {R"({"section":"S","key":"k"})", "!1: there is no text \"translation\""},
        {R"({"section":"S","translation":"x"})", "!1: there is no text \"key\""},
        {R"({"section":null,"key":"k","translation":"x"})", "!1: there is no text \"section\""},
        {R"({"section":"S","key":"k","translation":7})", "!1: there is no text \"translation\""},
        {R"({"section":"S","key":"k","translation":"a\nb"})",
         "!1: the translation holds a line break"},
        {R"({"section":"S","key":"k","translation":"a\rb"})",
         "!1: the translation holds a line break"},
        {R"({"section":"S","key":"k","translation":"a\tb"})", "!1: the translation holds a tab"},
        {"{\"section\":\"S\",\"key\":\"k\",\"translation\":\"\xE9\"}",
         "!1: this is no JSON object in UTF-8"},
        {"{\"section\":\"S\",\"key\":\"k\",\"translation\":\"\xED\xA0\x80\"}",
         "!1: this is no JSON object in UTF-8"},
        {R"({"section":"S","key":"k","translation":"\ud800"})",
         "!1: this is no JSON object in UTF-8"},
    };
    for (const auto& c : kCases) {
        const std::string dumped = dump(parseEdits(c.bytes));
        EXPECT_EQ(dumped.substr(0, dumped.find('\0')), c.edits) << c.bytes.substr(0, 100);
    }
}

}  // namespace
}  // namespace cli
