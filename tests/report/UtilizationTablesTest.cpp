// Sections 6 and 7 of the flow report, the utilisation tables, compared byte for byte, together
// with the failures that end the report part way through a table.
#include "report/UtilizationTables.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tests/support/Messages.h"

namespace {

using qvtest::parse;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class UtilizationTablesTest : public ::testing::Test {
 protected:
  static std::string perComputeUnitOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writeSlrUtilizationPerCu(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }
  static std::string perSlrOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writeCuUtilizationPerSlr(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }

  // Runs `write` on `qrxBinText`, expects it to throw `Exception` with the text `what`, and
  // gives what was written before.
  template <class Exception, class Write>
  static std::string outputBeforeFailure(Write write, std::string const& qrxBinText,
                                         std::string const& what) {
    std::ostringstream out;
    pb::qrxBin const binary = parse<pb::qrxBin>(qrxBinText);
    try {
      write(binary, out);
      ADD_FAILURE() << "no exception; written:\n" << out.str();
    } catch (Exception const& error) {
      EXPECT_EQ(std::string(error.what()), what);
    }
    return out.str();
  }

  static void writePerComputeUnit(pb::qrxBin const& binary, std::ostream& out) {
    IPA::writeSlrUtilizationPerCu(binary, out);
  }
  static void writePerSlr(pb::qrxBin const& binary, std::ostream& out) {
    IPA::writeCuUtilizationPerSlr(binary, out);
  }
};

std::string const titleSix =
    "6. SLR Utilization per Compute Unit\n"
    "===================================\n"
    "\n";

std::string const titleSeven =
    "7. Compute Unit Utilization per SLR\n"
    "===================================\n"
    "\n";

// kernel_a_1 on two SLRs and kernel_a_2 on one; the amounts available are the same in both.
std::string const kernelAUnit = R"(
  compute_units {
    name: "kernel_a_1"
    slr_resources {
      slr: "SLR0"
      utilization { resource: "LUT" used: "12000" available: "900000" }
      utilization { resource: "REG" used: "20000" available: "1800000" }
      utilization { resource: "BRAM" used: "18" available: "1300" }
    }
    slr_resources {
      slr: "SLR1"
      utilization { resource: "LUT" used: "300" available: "900000" }
      utilization { resource: "REG" used: "410" available: "1800000" }
      utilization { resource: "BRAM" used: "0" available: "1300" }
    }
  })";

std::string const kernelASecondUnit = R"(
  compute_units {
    name: "kernel_a_2"
    slr_resources {
      slr: "SLR0"
      utilization { resource: "LUT" used: "11000" available: "900000" }
      utilization { resource: "REG" used: "19000" available: "1800000" }
      utilization { resource: "BRAM" used: "18" available: "1300" }
    }
  })";

// One compute unit with a first entry of three rows and a second of `secondRows` rows.
std::string unevenEntries(int secondRows) {
  std::string text = R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "10" available: "100" }
          utilization { resource: "REG" used: "20" available: "100" }
          utilization { resource: "BRAM" used: "30" available: "100" }
        }
        slr_resources {
          slr: "SLR1")";
  char const* const names[] = {"URAM", "DSP", "IO", "GT"};
  for (int row = 0; row < secondRows; ++row) {
    text += " utilization { resource: \"" + std::string(names[row]) + "\" used: \"" +
            std::to_string(row + 1) + "\" available: \"10\" }";
  }
  text += " } } }";
  return text;
}

// ---- Section 6 ---------------------------------------------------------------------------------

TEST_F(UtilizationTablesTest, SlrUtilizationOfOneComputeUnit) {
  EXPECT_EQ(perComputeUnitOf("user_regions {" + kernelAUnit + "}"),
            "6. SLR Utilization per Compute Unit\n"
            "===================================\n"
            "\n"
            "Compute Unit: kernel_a_1\n"
            "+-----------+-------+------+--------+--------+\n"
            "| Site Type |  SLR0 | SLR1 | SLR0 % | SLR1 % |\n"
            "+-----------+-------+------+--------+--------+\n"
            "| LUT       | 12000 |  300 |   1.33 |   0.03 |\n"
            "| REG       | 20000 |  410 |   1.11 |   0.02 |\n"
            "| BRAM      |    18 |    0 |   1.38 |   0.00 |\n"
            "+-----------+-------+------+--------+--------+\n"
            "\n");
}

TEST_F(UtilizationTablesTest, FileStreamOverloadsWriteTheSameText) {
  pb::qrxBin const binary =
      parse<pb::qrxBin>("user_regions {" + kernelAUnit + kernelASecondUnit + "}");
  std::string const path = ::testing::TempDir() + "UtilizationTablesTest_file.txt";
  {
    std::ofstream file(path);
    IPA::writeSlrUtilizationPerCu(binary, file);
    IPA::writeCuUtilizationPerSlr(binary, file);
  }
  std::ostringstream expected;
  IPA::writeSlrUtilizationPerCu(binary, expected);
  IPA::writeCuUtilizationPerSlr(binary, expected);
  std::ifstream in(path);
  std::stringstream written;
  written << in.rdbuf();
  EXPECT_EQ(written.str(), expected.str());
  std::remove(path.c_str());
}

TEST_F(UtilizationTablesTest, NoRowsAnywhereShowsNeitherTitleSixNorSeven) {
  std::string const binary = R"(
    user_regions {
      compute_units { name: "cu_1" }
      compute_units { name: "cu_2" slr_resources { slr: "SLR0" } }
    }
    user_regions { })";
  EXPECT_EQ(perComputeUnitOf(binary), "");
  EXPECT_EQ(perSlrOf(binary), "");
  EXPECT_EQ(perComputeUnitOf(""), "");
  EXPECT_EQ(perSlrOf(""), "");
}

TEST_F(UtilizationTablesTest, ComputeUnitWithoutRowsIsLeftOutOfSectionSix) {
  EXPECT_EQ(perComputeUnitOf(R"(
    user_regions {
      compute_units { name: "cu_empty" slr_resources { slr: "SLR0" } }
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR9" }
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "4" } }
      }
      compute_units { name: "cu_none" }
      compute_units {
        name: "cu_2"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "3" available: "4" } }
      }
    })"),
            titleSix +
                "Compute Unit: cu_1\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    1 |  25.00 |\n"
                "+-----------+------+--------+\n"
                "\n"
                "Compute Unit: cu_2\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    3 |  75.00 |\n"
                "+-----------+------+--------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, TitleSixIsWrittenOnceAcrossUserRegions) {
  EXPECT_EQ(perComputeUnitOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "4" } }
      }
    }
    user_regions { compute_units { name: "cu_none" } }
    user_regions {
      compute_units {
        name: "cu_2"
        slr_resources { slr: "SLR1" utilization { resource: "LUT" used: "1" available: "8" } }
      }
    })"),
            titleSix +
                "Compute Unit: cu_1\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    1 |  25.00 |\n"
                "+-----------+------+--------+\n"
                "\n"
                "Compute Unit: cu_2\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR1 | SLR1 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    1 |  12.50 |\n"
                "+-----------+------+--------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, AvailableZeroShowsInfOrNanAndDoesNotFail) {
  std::string const written = perComputeUnitOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "5" available: "0" }
          utilization { resource: "REG" used: "0" available: "0" }
        }
      }
    })");
  // 0 over 0 prints as "nan" or "-nan", depending on the sign bit the division leaves.
  auto expectedWith = [](std::string const& nanCell) {
    return titleSix +
           "Compute Unit: cu_1\n"
           "+-----------+------+--------+\n"
           "| Site Type | SLR0 | SLR0 % |\n"
           "+-----------+------+--------+\n"
           "| LUT       |    5 |    inf |\n"
           "| REG       |    0 | " + nanCell + " |\n"
           "+-----------+------+--------+\n"
           "\n";
  };
  EXPECT_TRUE(written == expectedWith("   nan") || written == expectedWith("  -nan")) << written;
}

TEST_F(UtilizationTablesTest, SectionSixSiteTypesStartOverInEachUserRegion) {
  EXPECT_EQ(perComputeUnitOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "1" available: "2" }
          utilization { resource: "REG" used: "1" available: "2" }
        }
      }
      compute_units {
        name: "cu_2"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "CLB" used: "1" available: "4" }
          utilization { resource: "FF" used: "3" available: "4" }
        }
      }
    }
    user_regions {
      compute_units {
        name: "cu_3"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "CLB" used: "1" available: "4" }
          utilization { resource: "FF" used: "3" available: "4" }
        }
      }
    })"),
            titleSix +
                "Compute Unit: cu_1\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    1 |  50.00 |\n"
                "| REG       |    1 |  50.00 |\n"
                "+-----------+------+--------+\n"
                "\n"
                // Within a user region the first compute unit's names label the others' rows.
                "Compute Unit: cu_2\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| LUT       |    1 |  25.00 |\n"
                "| REG       |    3 |  75.00 |\n"
                "+-----------+------+--------+\n"
                "\n"
                "Compute Unit: cu_3\n"
                "+-----------+------+--------+\n"
                "| Site Type | SLR0 | SLR0 % |\n"
                "+-----------+------+--------+\n"
                "| CLB       |    1 |  25.00 |\n"
                "| FF        |    3 |  75.00 |\n"
                "+-----------+------+--------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, SectionSixStopsAtAShorterSecondEntry) {
  std::string const written = outputBeforeFailure<std::out_of_range>(
      writePerComputeUnit, unevenEntries(2),
      "vector::_M_range_check: __n (which is 3) >= this->size() (which is 3)");
  // Both names of the second entry were appended, so the table has six lines for columns of
  // four (and three) entries.
  EXPECT_EQ(written, titleSix +
                         "Compute Unit: cu_1\n"
                         "+-----------+------+------+--------+--------+\n"
                         "| Site Type | SLR0 | SLR1 | SLR0 % | SLR1 % |\n"
                         "+-----------+------+------+--------+--------+\n"
                         "| LUT       |   10 |    1 |  10.00 |  10.00 |\n"
                         "| REG       |   20 |    2 |  20.00 |  20.00 |\n"
                         "| BRAM      |   30 |");
}

TEST_F(UtilizationTablesTest, SectionSixStopsAtALongerSecondEntry) {
  std::string const written = outputBeforeFailure<std::out_of_range>(
      writePerComputeUnit, unevenEntries(4),
      "vector::_M_range_check: __n (which is 4) >= this->size() (which is 4)");
  // The second entry appended its first name only, which made five lines for the first entry's
  // columns of four.
  EXPECT_EQ(written, titleSix +
                         "Compute Unit: cu_1\n"
                         "+-----------+------+------+--------+--------+\n"
                         "| Site Type | SLR0 | SLR1 | SLR0 % | SLR1 % |\n"
                         "+-----------+------+------+--------+--------+\n"
                         "| LUT       |   10 |    1 |  10.00 |  10.00 |\n"
                         "| REG       |   20 |    2 |  20.00 |  20.00 |\n"
                         "| BRAM      |   30 |    3 |  30.00 |  30.00 |\n"
                         "| URAM      |");
}

TEST_F(UtilizationTablesTest, SectionSixStopsAtAnEmptyUsedBeforeItsComputeUnit) {
  std::string const written = outputBeforeFailure<std::invalid_argument>(
      writePerComputeUnit, R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "4" } }
      }
      compute_units {
        name: "cu_2"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "" available: "4" } }
      }
    })",
      "stof");
  EXPECT_EQ(written, titleSix +
                         "Compute Unit: cu_1\n"
                         "+-----------+------+--------+\n"
                         "| Site Type | SLR0 | SLR0 % |\n"
                         "+-----------+------+--------+\n"
                         "| LUT       |    1 |  25.00 |\n"
                         "+-----------+------+--------+\n"
                         "\n");
}

TEST_F(UtilizationTablesTest, SectionSixFailsBeforeItsTitleWhenTheFirstAvailableIsNoNumber) {
  std::string const written = outputBeforeFailure<std::invalid_argument>(
      writePerComputeUnit, R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "n/a" } }
      }
    })",
      "stof");
  EXPECT_EQ(written, "");
}

TEST_F(UtilizationTablesTest, SectionSixFailsOnAnAmountBeyondFloat) {
  std::string const written = outputBeforeFailure<std::out_of_range>(
      writePerComputeUnit, R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1e40" available: "4" } }
      }
    })",
      "stof");
  EXPECT_EQ(written, "");
}

// ---- Section 7 ---------------------------------------------------------------------------------

TEST_F(UtilizationTablesTest, ComputeUnitUtilizationPerSlr) {
  EXPECT_EQ(perSlrOf("user_regions {" + kernelAUnit + kernelASecondUnit + "}"),
            "7. Compute Unit Utilization per SLR\n"
            "===================================\n"
            "\n"
            "SLR0\n"
            "+-----------+------------+------------+-----------+\n"
            "| Site Type | kernel_a_1 | kernel_a_2 | Available |\n"
            "+-----------+------------+------------+-----------+\n"
            "| LUT       |      12000 |      11000 |    900000 |\n"
            "| REG       |      20000 |      19000 |   1800000 |\n"
            "| BRAM      |         18 |         18 |      1300 |\n"
            "+-----------+------------+------------+-----------+\n"
            "\n"
            "SLR1\n"
            "+-----------+------------+-----------+\n"
            "| Site Type | kernel_a_1 | Available |\n"
            "+-----------+------------+-----------+\n"
            "| LUT       |        300 |    900000 |\n"
            "| REG       |        410 |   1800000 |\n"
            "| BRAM      |          0 |      1300 |\n"
            "+-----------+------------+-----------+\n"
            "\n");
}

TEST_F(UtilizationTablesTest, EverySlrShowsTheAvailableAmountsOfTheFirstEntry) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR1"
          utilization { resource: "LUT" used: "5" available: "1000" }
        }
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "7" available: "22" }
        }
      }
    })"),
            titleSeven +
                "SLR0\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    7 |      1000 |\n"
                "+-----------+------+-----------+\n"
                "\n"
                "SLR1\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    5 |      1000 |\n"
                "+-----------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, SlrsComeInStringOrder) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR2" utilization { resource: "LUT" used: "2" available: "9" } }
        slr_resources { slr: "SLR10" utilization { resource: "LUT" used: "10" available: "9" } }
      }
    }
    user_regions {
      compute_units {
        name: "cu_2"
        slr_resources { slr: "SLR1" utilization { resource: "LUT" used: "1" available: "9" } }
      }
    })"),
            titleSeven +
                "SLR1\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_2 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    1 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n"
                "SLR10\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |   10 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n"
                "SLR2\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    2 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, ComputeUnitOnTwoSlrsHasAColumnInEachTable) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "9" } }
        slr_resources { slr: "SLR1" utilization { resource: "LUT" used: "2" available: "9" } }
      }
      compute_units {
        name: "cu_2"
        slr_resources { slr: "SLR1" utilization { resource: "LUT" used: "3" available: "9" } }
      }
    })"),
            titleSeven +
                "SLR0\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    1 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n"
                "SLR1\n"
                "+-----------+------+------+-----------+\n"
                "| Site Type | cu_1 | cu_2 | Available |\n"
                "+-----------+------+------+-----------+\n"
                "| LUT       |    2 |    3 |         9 |\n"
                "+-----------+------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, TwoEntriesForOneSlrGiveTwoColumnsOfTheSameName) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "9" } }
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "2" available: "9" } }
      }
    })"),
            titleSeven +
                "SLR0\n"
                "+-----------+------+------+-----------+\n"
                "| Site Type | cu_1 | cu_1 | Available |\n"
                "+-----------+------+------+-----------+\n"
                "| LUT       |    1 |    2 |         9 |\n"
                "+-----------+------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, TwoEntriesForOneSlrGiveTwoColumnsInSectionSixToo) {
  EXPECT_EQ(perComputeUnitOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "4" } }
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "2" available: "4" } }
      }
    })"),
            titleSix +
                "Compute Unit: cu_1\n"
                "+-----------+------+------+--------+--------+\n"
                "| Site Type | SLR0 | SLR0 | SLR0 % | SLR0 % |\n"
                "+-----------+------+------+--------+--------+\n"
                "| LUT       |    1 |    2 |  25.00 |  50.00 |\n"
                "+-----------+------+------+--------+--------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, SectionSevenKeepsTheFirstSiteTypesForTheWholeReport) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "1" available: "9" }
          utilization { resource: "REG" used: "2" available: "9" }
        }
      }
    }
    user_regions {
      compute_units {
        name: "cu_2"
        slr_resources {
          slr: "SLR1"
          utilization { resource: "CLB" used: "3" available: "5" }
          utilization { resource: "FF" used: "4" available: "5" }
        }
      }
    })"),
            titleSeven +
                "SLR0\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    1 |         9 |\n"
                "| REG       |    2 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n"
                "SLR1\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_2 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |    3 |         9 |\n"
                "| REG       |    4 |         9 |\n"
                "+-----------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, SectionSevenPrintsAmountsWithoutConvertingThem) {
  EXPECT_EQ(perSlrOf(R"(
    user_regions {
      compute_units {
        name: "cu_1"
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "" available: "n/a" }
          utilization { resource: "REG" used: "007" available: "" }
        }
      }
    })"),
            titleSeven +
                "SLR0\n"
                "+-----------+------+-----------+\n"
                "| Site Type | cu_1 | Available |\n"
                "+-----------+------+-----------+\n"
                "| LUT       |      |       n/a |\n"
                "| REG       |  007 |           |\n"
                "+-----------+------+-----------+\n"
                "\n");
}

TEST_F(UtilizationTablesTest, SectionSevenStopsAtAShorterSecondEntry) {
  std::string const written = outputBeforeFailure<std::out_of_range>(
      writePerSlr, unevenEntries(2),
      "vector::_M_range_check: __n (which is 4) >= this->size() (which is 4)");
  EXPECT_EQ(written, titleSeven +
                         "SLR0\n"
                         "+-----------+------+-----------+\n"
                         "| Site Type | cu_1 | Available |\n"
                         "+-----------+------+-----------+\n"
                         "| LUT       |   10 |       100 |\n"
                         "| REG       |   20 |       100 |\n"
                         "| BRAM      |   30 |       100 |\n"
                         "| URAM      |");
}

TEST_F(UtilizationTablesTest, SectionSevenStopsAtALongerSecondEntry) {
  std::string const written = outputBeforeFailure<std::out_of_range>(
      writePerSlr, unevenEntries(4),
      "vector::_M_range_check: __n (which is 4) >= this->size() (which is 4)");
  EXPECT_EQ(written, titleSeven +
                         "SLR0\n"
                         "+-----------+------+-----------+\n"
                         "| Site Type | cu_1 | Available |\n"
                         "+-----------+------+-----------+\n"
                         "| LUT       |   10 |       100 |\n"
                         "| REG       |   20 |       100 |\n"
                         "| BRAM      |   30 |       100 |\n"
                         "| URAM      |");
}

}  // namespace
