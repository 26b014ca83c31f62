#include "NimbrelExportKit/Messages/HandleNormalizer.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using HandleNormalizer::normalize;
using HandleNormalizer::normalizedSet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Case {
    const char* handle;
    const char* normalized;
};

TEST(HandleNormalizer, GivesEachHandleOneSpelling)
{
    for (const auto& [handle, normalized] : {
             Case{"  Someone@Example.COM\n", "someone@example.com"}, // e-mail: trimmed and lower-cased
             Case{"+1 (555) 010@x", "+1 (555) 010@x"},
             Case{"+1 (555) 010-2030", "+15550102030"},
             Case{"1-555-010-2030", "15550102030"},
             Case{"555.010.2030", "5550102030"},
             Case{"001 555 010 2030", "0015550102030"}, // prefixes stay
             Case{"urn:biz:ABC-123", "urn:biz:abc-123"},
             Case{"BIZ:42-42", "biz:42-42"},
             Case{"555-CALL", "555-call"}, // a letter blocks the phone rule
             Case{"abc123", "abc123"},
             Case{"---", "---"}, // no digits
             Case{"1+2", "12"},
             Case{"٣٤", "٣٤"},       // digits of another script alone are not a phone number
             Case{"+٣ 555", "+555"}, // beside ASCII digits they are part of one, but dropped
             Case{"555/010", "555/010"},
             Case{"\u00A0555\u3000", "555"},
             Case{"", ""},
             Case{" \t\u2003", ""},
         }) {
        EXPECT_EQ(normalize(handle), normalized) << handle;
    }
}

TEST(HandleNormalizer, DropsEmptyHandlesAndRepeats)
{
    EXPECT_THAT(normalizedSet({"+1 555", "+1-555", "", "A@b.c", "a@B.C"}), ElementsAre("+1555", "a@b.c"));
    EXPECT_THAT(normalizedSet({"", "  ", "\n"}), IsEmpty());
}

TEST(HandleNormalizer, LeavesIllFormedTextAsItIs)
{
    EXPECT_EQ(normalize("\xFF\xC3"), "\xFF\xC3"); // matches no stored handle, since those are repaired
}

} // namespace
} // namespace vorn
