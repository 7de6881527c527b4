#include "platform/messages/ComMsgMgrInstance.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComMsgMgrInstanceTest : public ::testing::Test {
 protected:
  // The masks written out as numbers, so that a changed constant shows here.
  static constexpr std::uint32_t kInfo = 0x4000000;
  static constexpr std::uint32_t kWarning = 0x8000000;
  static constexpr std::uint32_t kCritical = 0x10000000;
};

// ---- Identifiers and plain texts ----------------------------------------------------------------

TEST_F(ComMsgMgrInstanceTest, IdentifierWithoutArgumentsTakesTheCatalogueText) {
  ComMsgMgrInstance const message("morvane", "@82-179@", kWarning);
  EXPECT_EQ(message.lookup(), "morvane");
  EXPECT_EQ(message.format(), "@82-179@");
  EXPECT_EQ(message.id(), "82-179");
  EXPECT_EQ(message.mask(), 0x8000000u);
  EXPECT_THAT(message.arguments(), IsEmpty());
  EXPECT_EQ(message.text(),
            "The name or a detail of the tool run that generated the binary could not be "
            "recorded in the system diagram; the field is left empty.");
  EXPECT_EQ(message.line(),
            "WARNING: [morvane 82-179] The name or a detail of the tool run that generated the "
            "binary could not be recorded in the system diagram; the field is left empty.");
}

TEST_F(ComMsgMgrInstanceTest, IdentifierWithAnArgumentPutsItIntoTheCatalogueText) {
  ComMsgMgrInstance const message("mvk", "@60-842@%s", kWarning, "RTL_OBJECT");
  EXPECT_EQ(message.id(), "60-842");
  EXPECT_EQ(message.format(), "@60-842@%s");
  EXPECT_THAT(message.arguments(), ElementsAre("RTL_OBJECT"));
  EXPECT_EQ(message.text(),
            "Unknown kernel type 'RTL_OBJECT' in the kernels file; the kernel is kept with an "
            "unknown type.");
  EXPECT_EQ(message.line(),
            "WARNING: [mvk 60-842] Unknown kernel type 'RTL_OBJECT' in the kernels file; the "
            "kernel is kept with an unknown type.");
}

TEST_F(ComMsgMgrInstanceTest, ShippedExampleLineReadsAsDocumented) {
  ComMsgMgrInstance const message("morvane", "@82-214@%s", kWarning,
                                  std::string("k/vadd.design.xml"));
  EXPECT_EQ(message.line(),
            "WARNING: [morvane 82-214] No high-level synthesis report was found at "
            "k/vadd.design.xml; the kernel is listed without a resource estimate.");
}

TEST_F(ComMsgMgrInstanceTest, CatalogueTextTakesArgumentsInItsOwnConversions) {
  // The conversion after the identifier only says how many arguments there are; the
  // catalogue's "%s" is the one that is filled.
  ComMsgMgrInstance const message("mvk", "@60-839@%d", kInfo, 12);
  EXPECT_EQ(message.text(), "Finished reading the kernels file 12.");
  EXPECT_EQ(message.line(), "INFO: [mvk 60-839] Finished reading the kernels file 12.");
}

TEST_F(ComMsgMgrInstanceTest, IdentifierMissingItsArgumentLeavesTheConversionEmpty) {
  ComMsgMgrInstance const message("mvk", "@60-808@%s", kCritical);
  EXPECT_EQ(message.text(), "The kernels file could not be read: ");
  EXPECT_EQ(message.line(), "CRITICAL WARNING: [mvk 60-808] The kernels file could not be read: ");
}

TEST_F(ComMsgMgrInstanceTest, PlainTextIsFormattedAndHasNoIdentifier) {
  ComMsgMgrInstance const message("mvk", "Read %d kernels from %s", kInfo, 3, "k.xml");
  EXPECT_EQ(message.id(), "");
  EXPECT_EQ(message.format(), "Read %d kernels from %s");
  EXPECT_THAT(message.arguments(), ElementsAre("3", "k.xml"));
  EXPECT_EQ(message.text(), "Read 3 kernels from k.xml");
  EXPECT_EQ(message.line(), "INFO: [mvk] Read 3 kernels from k.xml");
}

TEST_F(ComMsgMgrInstanceTest, PlainTextWithoutConversionsIsShownAsItIs) {
  ComMsgMgrInstance const message("morvane", "Nothing to report.", kWarning);
  EXPECT_EQ(message.id(), "");
  EXPECT_EQ(message.text(), "Nothing to report.");
  EXPECT_EQ(message.line(), "WARNING: [morvane] Nothing to report.");
}

TEST_F(ComMsgMgrInstanceTest, FormatsThatAreNoIdentifierArePlainTexts) {
  struct Row {
    char const* format;
    char const* text;
  };
  Row const rows[] = {
      {"", ""},
      {"@", "@"},
      {"@82-179", "@82-179"},      // no closing mark
      {"82-179@", "82-179@"},      // no opening mark
      {" @82-179@", " @82-179@"},  // the mark must come first
      {"@@", "@@"},                // marks around nothing
      {"mail me@home@once", "mail me@home@once"},
  };
  for (Row const& row : rows) {
    ComMsgMgrInstance const message("mvk", row.format, kInfo);
    EXPECT_EQ(message.id(), "") << "format '" << row.format << "'";
    EXPECT_EQ(message.text(), row.text) << "format '" << row.format << "'";
    EXPECT_EQ(message.line(), std::string("INFO: [mvk] ") + row.text)
        << "format '" << row.format << "'";
  }
}

TEST_F(ComMsgMgrInstanceTest, TwoMarksWithNothingBetweenAreTextThatTakesArguments) {
  // "@@" names no message, so nothing of the format may be lost to an empty identifier.
  ComMsgMgrInstance const message("mvk", "@@%s@", kWarning, "x");
  EXPECT_EQ(message.id(), "");
  EXPECT_EQ(message.text(), "@@x@");
  EXPECT_EQ(message.line(), "WARNING: [mvk] @@x@");
}

TEST_F(ComMsgMgrInstanceTest, UnknownIdentifierIsShownWithItsArguments) {
  ComMsgMgrInstance const message("mvk", "@60-999@%s", kWarning, "k.xml");
  EXPECT_EQ(message.id(), "60-999");
  EXPECT_EQ(message.text(), "(no catalogue text for mvk 60-999) k.xml");
  EXPECT_EQ(message.line(), "WARNING: [mvk 60-999] (no catalogue text for mvk 60-999) k.xml");
}

TEST_F(ComMsgMgrInstanceTest, UnknownIdentifierFormatsTheRestOfTheFormat) {
  ComMsgMgrInstance const message("morvane", "@82-1@%s and %d%%", kInfo, "a", 5);
  EXPECT_EQ(message.text(), "(no catalogue text for morvane 82-1) a and 5%");
}

TEST_F(ComMsgMgrInstanceTest, UnknownIdentifierWithoutArgumentsShowsOnlyTheIdentifier) {
  ComMsgMgrInstance const message("morvane", "@82-1@", kCritical);
  EXPECT_EQ(message.text(), "(no catalogue text for morvane 82-1)");
  EXPECT_EQ(message.line(),
            "CRITICAL WARNING: [morvane 82-1] (no catalogue text for morvane 82-1)");
}

TEST_F(ComMsgMgrInstanceTest, KnownIdentifierUnderAnotherLookupIsUnknown) {
  // 60-842 is an "mvk" message, not a "morvane" one.
  ComMsgMgrInstance const message("morvane", "@60-842@%s", kWarning, "RTL");
  EXPECT_EQ(message.text(), "(no catalogue text for morvane 60-842) RTL");
  EXPECT_EQ(message.line(), "WARNING: [morvane 60-842] (no catalogue text for morvane 60-842) RTL");
}

TEST_F(ComMsgMgrInstanceTest, LookupIsMatchedExactly) {
  ComMsgMgrInstance const message("Morvane", "@82-179@", kWarning);
  EXPECT_EQ(message.text(), "(no catalogue text for Morvane 82-179)");
}

// ---- Arguments ----------------------------------------------------------------------------------

TEST_F(ComMsgMgrInstanceTest, ArgumentsPrintAsOnAStream) {
  struct Row {
    ComMsgMgrInstance message;
    char const* text;
  };
  Row const rows[] = {
      {ComMsgMgrInstance("mvk", "%d", kInfo, 42), "42"},
      {ComMsgMgrInstance("mvk", "%d", kInfo, -7), "-7"},
      {ComMsgMgrInstance("mvk", "%u", kInfo, 4000000000u), "4000000000"},
      {ComMsgMgrInstance("mvk", "%lu", kInfo, 18446744073709551615ul), "18446744073709551615"},
      {ComMsgMgrInstance("mvk", "%lld", kInfo, -9000000000ll), "-9000000000"},
      {ComMsgMgrInstance("mvk", "%f", kInfo, 2.5), "2.5"},
      {ComMsgMgrInstance("mvk", "%f", kInfo, 3.0), "3"},
      {ComMsgMgrInstance("mvk", "%g", kInfo, 0.1), "0.1"},
      {ComMsgMgrInstance("mvk", "%e", kInfo, 1e20), "1e+20"},
      {ComMsgMgrInstance("mvk", "%.2f", kInfo, 3.14159), "3.14159"},  // precision is not used
      {ComMsgMgrInstance("mvk", "%x", kInfo, 255), "255"},            // nor the base
      {ComMsgMgrInstance("mvk", "%c", kInfo, 'q'), "q"},
      {ComMsgMgrInstance("mvk", "%s", kInfo, "literal"), "literal"},
      {ComMsgMgrInstance("mvk", "%s", kInfo, std::string("string")), "string"},
      {ComMsgMgrInstance("mvk", "%s", kInfo, std::string()), ""},
      {ComMsgMgrInstance("mvk", "%d", kInfo, true), "1"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(row.message.text(), row.text) << "format '" << row.message.format() << "'";
  }
}

TEST_F(ComMsgMgrInstanceTest, ArgumentsAreKeptAsTexts) {
  ComMsgMgrInstance const message("mvk", "%s %d %f", kInfo, "one", 2, 3.5);
  EXPECT_THAT(message.arguments(), ElementsAre("one", "2", "3.5"));
  EXPECT_EQ(message.text(), "one 2 3.5");
}

TEST_F(ComMsgMgrInstanceTest, VectorOfArgumentsIsTakenAsItIs) {
  ComMsgMgrInstance const message("mvk", "%s/%s", kInfo, std::vector<std::string>{"a", "b"});
  EXPECT_THAT(message.arguments(), ElementsAre("a", "b"));
  EXPECT_EQ(message.text(), "a/b");
}

TEST_F(ComMsgMgrInstanceTest, ArgumentsAreNotThemselvesFormatted) {
  ComMsgMgrInstance const message("mvk", "%s and %s", kInfo, "100%s", "x");
  EXPECT_EQ(message.text(), "100%s and x");
}

// ---- substitute ---------------------------------------------------------------------------------

TEST_F(ComMsgMgrInstanceTest, SubstituteReplacesConversionsInOrder) {
  struct Row {
    char const* format;
    std::vector<std::string> arguments;
    char const* result;
  };
  Row const rows[] = {
      {"%s", {"a"}, "a"},
      {"%d", {"42"}, "42"},
      {"%5s", {"ab"}, "ab"},  // width is not used: the argument is shown as it is
      {"%-10s|", {"ab"}, "ab|"},
      {"%08.3f", {"1.5"}, "1.5"},
      {"%+d", {"3"}, "3"},
      {"%ld %lu %zu %hhd", {"1", "2", "3", "4"}, "1 2 3 4"},
      {"%i %o %x %X %e %E %g %G %a %A %c %p",
       {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"},
       "1 2 3 4 5 6 7 8 9 10 11 12"},
      {"[%s] [%s]", {"a", "b"}, "[a] [b]"},
      {"%s%s%s", {"x", "y", "z"}, "xyz"},
      {"no conversions", {}, "no conversions"},
      {"", {}, ""},
      {"", {"unused"}, ""},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(ComMsgMgrInstance::substitute(row.format, row.arguments), row.result)
        << "format '" << row.format << "'";
  }
}

TEST_F(ComMsgMgrInstanceTest, SubstituteKeepsPercentSigns) {
  struct Row {
    char const* format;
    std::vector<std::string> arguments;
    char const* result;
  };
  Row const rows[] = {
      {"100%%", {}, "100%"},      // an escaped percent sign
      {"%%s", {"a"}, "%s"},       // takes no argument
      {"%%%s", {"a"}, "%a"},      // and is followed by a real conversion
      {"%%%%", {}, "%%"},         // two escaped ones
      {"%", {}, "%"},             // a lone percent sign at the end is text
      {"100%", {"a"}, "100%"},    // also after text
      {"%y", {"a"}, "%y"},        // not a conversion
      {"%-", {}, "%-"},           // flags without a conversion
      {"%5", {"a"}, "%5"},        // a width without a conversion
      {"a % b", {"x"}, "a % b"},  // a blank flag, then no conversion
      {"%!%s", {"x"}, "%!x"},     // not a flag, then a conversion
  };
  for (Row const& row : rows) {
    EXPECT_EQ(ComMsgMgrInstance::substitute(row.format, row.arguments), row.result)
        << "format '" << row.format << "'";
  }
}

TEST_F(ComMsgMgrInstanceTest, SubstituteGivesNothingForMissingArguments) {
  struct Row {
    char const* format;
    std::vector<std::string> arguments;
    char const* result;
  };
  Row const rows[] = {
      {"%s", {}, ""},
      {"<%s>", {}, "<>"},
      {"%s and %s", {"a"}, "a and "},
      {"%d-%d-%d", {"1", "2"}, "1-2-"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(ComMsgMgrInstance::substitute(row.format, row.arguments), row.result)
        << "format '" << row.format << "'";
  }
}

TEST_F(ComMsgMgrInstanceTest, SubstituteIgnoresArgumentsBeyondTheConversions) {
  EXPECT_EQ(ComMsgMgrInstance::substitute("%s", {"a", "b", "c"}), "a");
}

// ---- Severity -----------------------------------------------------------------------------------

TEST_F(ComMsgMgrInstanceTest, SeverityComesFromTheMostSevereBit) {
  struct Row {
    std::uint32_t mask;
    char const* severity;
  };
  Row const rows[] = {
      {0x4000000, "INFO"},
      {0x8000000, "WARNING"},
      {0x10000000, "CRITICAL WARNING"},
      {0x4000000 | 0x8000000, "WARNING"},
      {0x8000000 | 0x10000000, "CRITICAL WARNING"},
      {0x4000000 | 0x10000000, "CRITICAL WARNING"},
      {0x4000000 | 0x8000000 | 0x10000000, "CRITICAL WARNING"},
      {0, "INFO"},
      {0x1, "INFO"},
      {0x2000000, "INFO"},
      {0x20000000, "INFO"},
      {0x8000001, "WARNING"},
      {0xffffffff, "CRITICAL WARNING"},
  };
  for (Row const& row : rows) {
    ComMsgMgrInstance const message("mvk", "text", row.mask);
    EXPECT_EQ(message.severity(), row.severity) << std::hex << "mask 0x" << row.mask;
    EXPECT_EQ(message.line(), std::string(row.severity) + ": [mvk] text")
        << std::hex << "mask 0x" << row.mask;
  }
}

TEST_F(ComMsgMgrInstanceTest, MaskConstantsHaveTheirSeverities) {
  EXPECT_EQ(ComMsgMgrInstance("mvk", "t", kComMsgInfo).severity(), "INFO");
  EXPECT_EQ(ComMsgMgrInstance("mvk", "t", kComMsgWarning).severity(), "WARNING");
  EXPECT_EQ(ComMsgMgrInstance("mvk", "t", kComMsgCriticalWarning).severity(), "CRITICAL WARNING");
  EXPECT_EQ(kComMsgInfo, 0x4000000u);
  EXPECT_EQ(kComMsgWarning, 0x8000000u);
  EXPECT_EQ(kComMsgCriticalWarning, 0x10000000u);
}

// ---- Copies -------------------------------------------------------------------------------------

TEST_F(ComMsgMgrInstanceTest, CopyKeepsEverything) {
  ComMsgMgrInstance const original("mvk", "@60-842@%s", kWarning, "HLS");
  ComMsgMgrInstance const copy = original;
  EXPECT_EQ(copy.lookup(), "mvk");
  EXPECT_EQ(copy.format(), "@60-842@%s");
  EXPECT_EQ(copy.id(), "60-842");
  EXPECT_EQ(copy.mask(), 0x8000000u);
  EXPECT_THAT(copy.arguments(), ElementsAre("HLS"));
  EXPECT_EQ(copy.line(), original.line());
}

}  // namespace
