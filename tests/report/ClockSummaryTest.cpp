// Section 5 of the flow report, the clock summary, compared byte for byte.
#include "report/ClockSummary.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/Messages.h"

namespace {

using qvtest::parse;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class ClockSummaryTest : public ::testing::Test {
 protected:
  static std::string summaryOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writeClockSummary(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }
  static std::string aieTableOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writeAieClockSummary(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }
  static std::string plTableOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writePlClockSummary(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }
};

std::string const title =
    "5. Clock Summary\n"
    "================\n"
    "\n";

// ---- The section as a whole --------------------------------------------------------------------

TEST_F(ClockSummaryTest, AieAndPlTablesOfOneDiagram) {
  std::string const binary = R"(
    user_regions {
      kernels {
        name: "ai_engine"
        clock_refs { name: "IN_A" annotated_arg: "data_in" requested_frequency: 312.5 }
      }
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a:in_b" requested_frequency: 300 }
      }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 291.5 }
      }
    })";
  EXPECT_EQ(summaryOf(binary),
            "5. Clock Summary\n"
            "================\n"
            "\n"
            "AIE\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| engine_1 | ai_engine | in_a | data_in       | clk        | 312.50        | 300.00     |\n"
            "| engine_1 | ai_engine | in_b |               | clk        | N/A           | 300.00     |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "\n"
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | 300.00        | 291.50     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, FileStreamOverloadsWriteTheSameText) {
  pb::qrxBin const binary = parse<pb::qrxBin>(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 291.5 }
      }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
    })");
  std::string const path = ::testing::TempDir() + "ClockSummaryTest_file.txt";
  {
    std::ofstream file(path);
    IPA::writeClockSummary(binary, file);
    IPA::writeAieClockSummary(binary, file);
    IPA::writePlClockSummary(binary, file);
  }
  std::ostringstream expected;
  IPA::writeClockSummary(binary, expected);
  IPA::writeAieClockSummary(binary, expected);
  IPA::writePlClockSummary(binary, expected);
  std::ifstream in(path);
  std::stringstream written;
  written << in.rdbuf();
  EXPECT_EQ(written.str(), expected.str());
  std::remove(path.c_str());
}

TEST_F(ClockSummaryTest, WithoutQrxBinTheTitleStandsAlone) {
  EXPECT_EQ(summaryOf(""), title);
}

TEST_F(ClockSummaryTest, WithoutComputeUnitsTheTitleStandsAlone) {
  EXPECT_EQ(summaryOf(R"(
    user_regions { kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } } }
    user_regions { })"),
            title);
}

TEST_F(ClockSummaryTest, WithoutANonZeroClockTheTitleStandsAlone) {
  EXPECT_EQ(summaryOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units { name: "kernel_a_1" kernel_name: "kernel_a" clock_refs { name: "clk" } }
      compute_units { name: "kernel_b_1" kernel_name: "kernel_b" }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 0 }
      }
    })"),
            title);
}

TEST_F(ClockSummaryTest, AieTableMayStandAlone) {
  EXPECT_EQ(summaryOf(R"(
    user_regions {
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
      compute_units { name: "kernel_a_1" kernel_name: "kernel_a" clock_refs { name: "clk" } }
    })"),
            title +
                "AIE\n"
                "+----------+-----------+------+---------------+------------+---------------+------------+\n"
                "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
                "+----------+-----------+------+---------------+------------+---------------+------------+\n"
                "| engine_1 | ai_engine | in_a |               | clk        | N/A           | 300.00     |\n"
                "+----------+-----------+------+---------------+------------+---------------+------------+\n"
                "\n");
}

TEST_F(ClockSummaryTest, PlTableMayStandAlone) {
  EXPECT_EQ(summaryOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units { name: "engine_1" kernel_name: "ai_engine" clock_refs { name: "clk" plio: "in_a" } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 250 }
      }
    })"),
            title +
                "PL\n"
                "+------------+----------+------------+---------------+------------+\n"
                "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
                "+------------+----------+------------+---------------+------------+\n"
                "| kernel_a_1 | kernel_a | clk        | 300.00        | 250.00     |\n"
                "+------------+----------+------------+---------------+------------+\n"
                "\n");
}

// ---- PL table ----------------------------------------------------------------------------------

TEST_F(ClockSummaryTest, PlComputeUnitWhoseKernelIsMissingShowsNotAvailable) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "kernel_b" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 300 }
        clock_refs { name: "clk_2" requested_frequency: 500 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | N/A           | 300.00     |\n"
            "| kernel_a_1 | kernel_a | clk_2      | N/A           | 500.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, KernelOfAnotherUserRegionIsNotFound) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
    }
    user_regions {
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | N/A           | 300.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, FirstKernelOfTheNameGivesTheCompileClocks) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 100 } }
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 200 } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | 100.00        | 300.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, ClockAtZeroHasNoRowAndAllZeroComputeUnitDoesNotShow) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "clk" requested_frequency: 300 } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 0 }
        clock_refs { name: "clk_2" requested_frequency: 0 }
      }
      compute_units {
        name: "kernel_a_2" kernel_name: "kernel_a"
        clock_refs { name: "clk_unknown" }
        clock_refs { name: "clk" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_2 | kernel_a | clk        | 300.00        | 300.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, PlPortMatchKeepsCase) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "kernel_a" clock_refs { name: "CLK" requested_frequency: 300 } }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | N/A           | 300.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, FirstKernelPortOfTheNameDecidesEvenAtZero) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels {
        name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 0 }
        clock_refs { name: "clk" requested_frequency: 300 }
      }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| kernel_a_1 | kernel_a | clk        | N/A           | 300.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, RowsKeepTheOrderOfRegionsComputeUnitsAndClocks) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      kernels { name: "zeta" clock_refs { name: "b" requested_frequency: 99.999 } }
      compute_units {
        name: "zeta_1" kernel_name: "zeta"
        clock_refs { name: "b" requested_frequency: 0.001 }
        clock_refs { name: "a" requested_frequency: 10 }
      }
    }
    user_regions {
      compute_units { name: "alpha_1" kernel_name: "alpha" clock_refs { name: "c" requested_frequency: 1 } }
    })"),
            "PL\n"
            "+----------+--------+------------+---------------+------------+\n"
            "| Instance | Kernel | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+--------+------------+---------------+------------+\n"
            "| zeta_1   | zeta   | b          | 100.00        | 0.00       |\n"
            "| zeta_1   | zeta   | a          | N/A           | 10.00      |\n"
            "| alpha_1  | alpha  | c          | N/A           | 1.00       |\n"
            "+----------+--------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, PlTableWithoutRowsWritesNothing) {
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
    })"),
            "");
}

// ---- AIE table ---------------------------------------------------------------------------------

TEST_F(ClockSummaryTest, PlioMatchIgnoresCase) {
  std::string const binary = R"(
    user_regions {
      kernels {
        name: "ai_engine"
        clock_refs { name: "In_A" annotated_arg: "data_in" requested_frequency: 312.5 }
      }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "iN_a" requested_frequency: 300 }
      }
    })";
  EXPECT_EQ(aieTableOf(binary),
            "AIE\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| engine_1 | ai_engine | iN_a | data_in       | clk        | 312.50        | 300.00     |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, NamesDifferingInCaseMatchInAieButNotInPl) {
  std::string const binary = R"(
    user_regions {
      kernels { name: "ai_engine" clock_refs { name: "PORT_A" requested_frequency: 400 } }
      kernels { name: "kernel_a" clock_refs { name: "PORT_A" requested_frequency: 400 } }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "port_a" requested_frequency: 300 }
      }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "port_a" requested_frequency: 300 }
      }
    })";
  EXPECT_EQ(summaryOf(binary),
            title +
                "AIE\n"
                "+----------+-----------+--------+---------------+------------+---------------+------------+\n"
                "| Instance | Kernel    | PLIO   | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
                "+----------+-----------+--------+---------------+------------+---------------+------------+\n"
                "| engine_1 | ai_engine | port_a |               | clk        | 400.00        | 300.00     |\n"
                "+----------+-----------+--------+---------------+------------+---------------+------------+\n"
                "\n"
                "PL\n"
                "+------------+----------+------------+---------------+------------+\n"
                "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
                "+------------+----------+------------+---------------+------------+\n"
                "| kernel_a_1 | kernel_a | port_a     | N/A           | 300.00     |\n"
                "+------------+----------+------------+---------------+------------+\n"
                "\n");
}

TEST_F(ClockSummaryTest, EmptyAnnotatedArgPrintsAsBlanksAtTheColumnWidth) {
  EXPECT_EQ(aieTableOf(R"(
    user_regions {
      kernels {
        name: "ai_engine"
        clock_refs { name: "in_a" annotated_arg: "a_very_long_argument" requested_frequency: 250 }
        clock_refs { name: "in_b" requested_frequency: 250 }
      }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a:in_b" requested_frequency: 300 }
      }
    })"),
            "AIE\n"
            "+----------+-----------+------+----------------------+------------+---------------+------------+\n"
            "| Instance | Kernel    | PLIO | Annotated Arg        | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------+----------------------+------------+---------------+------------+\n"
            "| engine_1 | ai_engine | in_a | a_very_long_argument | clk        | 250.00        | 300.00     |\n"
            "| engine_1 | ai_engine | in_b |                      | clk        | 250.00        | 300.00     |\n"
            "+----------+-----------+------+----------------------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, EveryPlioNameGetsItsOwnRowEmptyNamesIncluded) {
  EXPECT_EQ(aieTableOf(R"(
    user_regions {
      kernels {
        name: "ai_engine"
        clock_refs { name: "" annotated_arg: "nameless" requested_frequency: 100 }
        clock_refs { name: "in_a" annotated_arg: "data_a" requested_frequency: 200 }
      }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a::in_c" requested_frequency: 300 }
        clock_refs { name: "clk_2" requested_frequency: 150 }
      }
    })"),
            "AIE\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| engine_1 | ai_engine | in_a | data_a        | clk        | 200.00        | 300.00     |\n"
            "| engine_1 | ai_engine |      | nameless      | clk        | 100.00        | 300.00     |\n"
            "| engine_1 | ai_engine | in_c |               | clk        | N/A           | 300.00     |\n"
            "| engine_1 | ai_engine |      | nameless      | clk_2      | 100.00        | 150.00     |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, AieMatchAtZeroKeepsItsAnnotatedArgAndShowsNotAvailable) {
  EXPECT_EQ(aieTableOf(R"(
    user_regions {
      kernels {
        name: "ai_engine"
        clock_refs { name: "IN_A" annotated_arg: "first" }
        clock_refs { name: "in_a" annotated_arg: "second" requested_frequency: 200 }
      }
      compute_units {
        name: "engine_1" kernel_name: "ai_engine"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
    })"),
            "AIE\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "| engine_1 | ai_engine | in_a | first         | clk        | N/A           | 300.00     |\n"
            "+----------+-----------+------+---------------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(ClockSummaryTest, OnlyTheExactKernelNameAiEngineMarksAnAieComputeUnit) {
  EXPECT_EQ(aieTableOf(R"(
    user_regions {
      compute_units {
        name: "engine_1" kernel_name: "AI_ENGINE"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
    })"),
            "");
  EXPECT_EQ(plTableOf(R"(
    user_regions {
      compute_units {
        name: "engine_1" kernel_name: "AI_ENGINE"
        clock_refs { name: "clk" plio: "in_a" requested_frequency: 300 }
      }
    })"),
            "PL\n"
            "+----------+-----------+------------+---------------+------------+\n"
            "| Instance | Kernel    | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+----------+-----------+------------+---------------+------------+\n"
            "| engine_1 | AI_ENGINE | clk        | N/A           | 300.00     |\n"
            "+----------+-----------+------------+---------------+------------+\n"
            "\n");
}

}  // namespace
