// The import (MakeInitialSystemDiagram's road: SystemDiagram::populateInitialSystemDiagram, then
// the writer) answers exactly what it answered before it was made faster.
//
// The files in tests/data/golden/import/ were written by the import as it stood before that work
// (scripts/regen-golden, QV_UPDATE_GOLDEN), and are the old import's answers kept beside the
// code: every case below runs the current import and compares what it writes with them.
//
// - The fuzz seeds of the rtd file and of the platform description (fuzz/corpus/), each with the
//   example's other half: the whole written diagram and every message, kept as text.
// - Generated designs: a few hundred rtd files made from a fixed seed, with every shape the
//   import has a branch for (streams paired, dangling and split three ways, memory indices out of
//   range or with leading zeros, IP names without a colon or with several, clock groups, unknown
//   and repeated members, sections missing, other schema versions), and byte mutations of the
//   seeds as a fuzzer makes them. Their written diagrams and messages together are large, so the
//   golden file keeps, per case, the length and a 64-bit FNV-1a digest of the bytes; a case that
//   differs leaves its text in the test's temporary directory (named in the failure) to be read.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "diagram/SystemDiagram.h"
#include "tests/support/Golden.h"
#include "tests/support/MessageCapture.h"
#include "tests/support/TempDir.h"
#include "tests/support/WorkingDirectory.h"

namespace {

class ImportEquivalenceTest : public ::testing::Test {
 protected:
  static std::string examplePlatform() {
    return qvtest::exampleFile("platforms/qv_accel_h2_gen3x16.json");
  }

  static void writeFile(std::string const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
  }

  // Everything the import answers for one pair of files: the written diagram, or the text of the
  // exception it ended with, then every message sent on the way.
  std::string importAnswer(std::string const& rtdFile, std::string const& platform,
                           std::string const& kernelsFile) {
    qvtest::MessageCapture messages;
    std::string answer;
    try {
      IPA::SystemDiagram diagram;
      diagram.populateInitialSystemDiagram(rtdFile, platform, "qvcc", "2026.2", "5120",
                                           "Sat Nov 21 12:00:00 2026", "detail a", "detail b",
                                           kernelsFile, "vadd.qrxbin", true);
      std::string const out = dir.file("written.json");
      diagram.serializeCurrentSystemDiagram(out);
      answer = qvtest::readFile(out);
    } catch (std::exception const& error) {
      answer = std::string("refused: ") + error.what() + "\n";
    }
    answer += "-- messages\n";
    for (std::string const& line : messages.sent()) answer += line + "\n";
    return answer;
  }

  qvtest::TempDir dir;
};

std::uint64_t fnv1a(std::string const& bytes) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (unsigned char const c : bytes) {
    hash ^= c;
    hash *= 1099511628211ULL;
  }
  return hash;
}

std::string digestLine(std::string const& name, std::string const& answer) {
  char digest[17];
  std::snprintf(digest, sizeof digest, "%016llx", static_cast<unsigned long long>(fnv1a(answer)));
  return name + " " + std::to_string(answer.size()) + " " + digest + "\n";
}

// The digests of `answers` against the golden file `name`; each case that differs is left whole
// in the test's temporary directory and named in the failure.
void expectDigests(std::string const& kind, std::vector<std::string> const& answers,
                   std::string const& name) {
  std::string digests;
  for (std::size_t n = 0; n < answers.size(); ++n) {
    digests += digestLine(kind + " " + std::to_string(n), answers[n]);
  }
  ::testing::AssertionResult const matched = qvtest::MatchesGolden(digests, name);
  if (matched) return;
  ADD_FAILURE() << matched.message();
  std::istringstream expected(qvtest::readFile(qvtest::dataFile("golden/" + name)));
  std::string line;
  for (std::size_t n = 0; n < answers.size(); ++n) {
    if (!std::getline(expected, line)) line.clear();
    if (line + "\n" == digestLine(kind + " " + std::to_string(n), answers[n])) continue;
    std::string const path = ::testing::TempDir() + "import_" + kind + "_" + std::to_string(n) + ".txt";
    std::ofstream(path, std::ios::binary) << answers[n];
    ADD_FAILURE() << kind << " " << n << " differs from " << name << "; it wrote " << path;
  }
}

// The generator draws from the raw output of std::mt19937, whose sequence the standard fixes,
// so the designs are the same with every standard library.
class Draw {
 public:
  explicit Draw(std::uint32_t seed) : engine(seed) {}
  // 0 .. n-1
  std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(engine() % n); }
  bool chance(std::uint32_t percent) { return below(100) < percent; }

 private:
  std::mt19937 engine;
};

std::string quoted(std::string const& text) { return "\"" + text + "\""; }

// One rtd file of the generator. Memories 0..15 are DDR and HBM tags of the example platform
// (and some that it has no segment for), then the streaming memories; units of four kernels.
std::string generatedDesign(Draw& draw) {
  int const memories = 1 + static_cast<int>(draw.below(12));
  int const streams = static_cast<int>(draw.below(6));
  int const units = static_cast<int>(draw.below(24));
  char const* const memoryTypes[] = {"MEM_DDR4", "MEM_HBM", "MEM_DRAM", "MEM_BOGUS"};
  char const* const tags[] = {"DDR[0]", "DDR[1]", "HBM[0]", "HBM[3]", "HBM[31]", "PLRAM[0]",
                              "bank9", ""};
  std::ostringstream out;
  out << "{\n";
  int const version = static_cast<int>(draw.below(20));
  if (version != 0) {
    out << R"( "schema_version": {"major": ")" << (version == 1 ? "2" : "1")
        << R"(", "minor": "0", "patch": ")" << (version == 2 ? "7" : "0") << "\"},\n";
  }

  std::vector<bool> streaming;
  if (!draw.chance(5)) {
    out << R"( "mem_topology": {"m_count": ")" << memories + streams << R"(", "m_mem_data": [)";
    for (int m = 0; m < memories + streams; ++m) {
      bool const stream = m >= memories;
      streaming.push_back(stream);
      out << (m == 0 ? "" : ",") << "\n  {";
      if (stream) {
        out << R"("m_type": "MEM_STREAMING_CONNECTION", "m_used": "1", "m_sizeKB": "0", )"
            << R"("m_base_address": "0x0", "m_tag": ")" << "stream_" << m << "\"";
      } else {
        std::string const tag = tags[draw.below(8)];
        out << R"("m_type": ")" << memoryTypes[draw.below(4)] << R"(", "m_used": ")"
            << draw.below(3) << R"(", "m_sizeKB": ")" << 1024 * (1 + draw.below(64))
            << R"(", "m_base_address": "0x)" << std::hex << 0x4000000000ULL + m * 0x1000000ULL
            << std::dec << R"(", "m_tag": )" << quoted(tag);
        if (!draw.chance(20)) out << R"(, "m_spTag": )" << quoted(tag);
      }
      if (draw.chance(10)) out << R"(, "m_extra": "ignored")";
      if (draw.chance(5)) out << R"(, "m_used": "1")";
      out << "}";
    }
    out << "]},\n";
  }

  if (!draw.chance(5)) {
    out << R"( "ip_layout": {"m_count": ")" << units << R"(", "m_ip_data": [)";
    for (int u = 0; u < units; ++u) {
      out << (u == 0 ? "" : ",") << "\n  {"
          << R"("m_type": "IP_KERNEL", "m_base_address": "0x)" << std::hex << 0x1800000 + u * 0x10000
          << std::dec << "\", ";
      switch (draw.below(12)) {
        case 0:
          out << R"("m_name": "axi_perf_mon_)" << u << "\"";
          break;
        case 1:
          out << R"("m_name": "krnl:krnl_)" << u << R"(:extra")";
          break;
        case 2:
          out << R"("m_name": ":krnl_)" << u << "\"";
          break;
        default:
          out << R"("m_name": "krnl)" << u % 4 << ":krnl" << u % 4 << "_" << u << "\"";
      }
      int const groups = static_cast<int>(draw.below(3));
      for (int repeat = 0; repeat < (draw.chance(10) ? 2 : 1); ++repeat) {
        if (groups == 0) break;
        out << R"(, "m_clocks": [)";
        for (int g = 0; g < groups; ++g) {
          out << (g == 0 ? "" : ", ") << "{";
          int const ports = 1 + static_cast<int>(draw.below(2));
          for (int p = 0; p < ports; ++p) {
            out << (p == 0 ? "" : ", ") << "\"clk" << g << p << R"(": {"refClockId": ")"
                << draw.below(3) << "\"}";
          }
          out << "}";
        }
        out << "]";
      }
      out << "}";
    }
    out << "]},\n";
  }

  int const total = memories + streams;
  int const connections = units * static_cast<int>(draw.below(6));
  out << R"( "connectivity": {"m_count": ")" << connections << R"(", "m_connection": [)";
  for (int c = 0; c < connections; ++c) {
    out << (c == 0 ? "" : ",") << "\n  {";
    std::string memory;
    switch (draw.below(10)) {
      case 0:
        memory = std::to_string(total + static_cast<int>(draw.below(3)));  // out of range
        break;
      case 1:
        memory = "0" + std::to_string(draw.below(static_cast<std::uint32_t>(total)));
        break;
      case 2:
        memory = "x";
        break;
      default:
        // Mostly streams when there are any, so that they pair, dangle and split.
        memory = std::to_string(streams > 0 && draw.chance(40)
                                    ? memories + static_cast<int>(draw.below(static_cast<std::uint32_t>(streams)))
                                    : static_cast<int>(draw.below(static_cast<std::uint32_t>(total))));
    }
    if (!draw.chance(3)) out << R"("arg_index": ")" << c % 7 << R"(", )";
    if (!draw.chance(3)) out << R"("arg_name": "arg)" << c % 7 << R"(", )";
    out << R"("mode": ")" << draw.below(2) << R"(", "m_ip_layout_index": ")"
        << draw.below(static_cast<std::uint32_t>(units + 1)) << R"(", "mem_data_index": ")" << memory
        << "\"}";
  }
  out << "]}\n}\n";
  return out.str();
}

// A fuzzer's kind of change: flip, insert, delete or repeat a few bytes.
std::string mutated(std::string text, Draw& draw) {
  int const changes = 1 + static_cast<int>(draw.below(4));
  for (int i = 0; i < changes && !text.empty(); ++i) {
    std::size_t const at = draw.below(static_cast<std::uint32_t>(text.size()));
    switch (draw.below(4)) {
      case 0:
        text[at] = static_cast<char>(text[at] ^ (1 << draw.below(8)));
        break;
      case 1:
        text.insert(at, 1, "\"{}[],:0123456789x"[draw.below(18)]);
        break;
      case 2:
        text.erase(at, 1 + draw.below(8));
        break;
      default:
        text.insert(at, text.substr(at, 1 + draw.below(40)));
    }
  }
  return text;
}

std::vector<std::string> seedFiles(std::string const& folder) {
  std::vector<std::string> files;
  for (auto const& entry :
       boost::filesystem::directory_iterator(qvtest::dataFile("../../fuzz/corpus/" + folder))) {
    files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST_F(ImportEquivalenceTest, RtdSeedsWriteWhatTheyWroteBefore) {
  qvtest::WorkingDirectory here(qvtest::exampleFile("design"));
  for (std::string const& rtd : seedFiles("rtd_file")) {
    std::string const name = boost::filesystem::path(rtd).filename().string();
    SCOPED_TRACE(name);
    EXPECT_GOLDEN(importAnswer(rtd, examplePlatform(), "kernels.txt"),
                  "import/rtd_seed_" + name + ".txt");
  }
}

TEST_F(ImportEquivalenceTest, PlatformSeedsWriteWhatTheyWroteBefore) {
  qvtest::WorkingDirectory here(qvtest::exampleFile("design"));
  for (std::string const& platform : seedFiles("platform_description")) {
    std::string const name = boost::filesystem::path(platform).filename().string();
    SCOPED_TRACE(name);
    // A copy under a name of its own: the import keeps one platform text per name per process.
    std::string const copy = dir.file("seed_" + name);
    writeFile(copy, qvtest::readFile(platform));
    EXPECT_GOLDEN(importAnswer(qvtest::exampleFile("design/vector_pipeline.rtd.json"), copy,
                               "kernels.txt"),
                  "import/platform_seed_" + name + ".txt");
  }
}

TEST_F(ImportEquivalenceTest, GeneratedDesignsWriteWhatTheyWroteBefore) {
  Draw draw(20261124);
  std::vector<std::string> answers;
  std::string const rtd = dir.file("design.rtd.json");
  for (int n = 0; n < 300; ++n) {
    writeFile(rtd, generatedDesign(draw));
    std::string const answer = importAnswer(rtd, examplePlatform(), dir.file("no-kernels.txt"));
    answers.push_back(answer);
    // The first few whole, so that the digests stand on texts someone has read.
    if (n < 4) {
      EXPECT_GOLDEN(answer, "import/generated_" + std::to_string(n) + ".txt");
    }
  }
  expectDigests("design", answers, "import/generated_digests.txt");
}

TEST_F(ImportEquivalenceTest, MutatedSeedsWriteWhatTheyWroteBefore) {
  Draw draw(4242);
  std::vector<std::string> seeds;
  for (std::string const& file : seedFiles("rtd_file")) seeds.push_back(qvtest::readFile(file));
  std::vector<std::string> answers;
  std::string const rtd = dir.file("mutant.rtd.json");
  for (int n = 0; n < 300; ++n) {
    writeFile(rtd, mutated(seeds[n % seeds.size()], draw));
    std::string const answer = importAnswer(rtd, examplePlatform(), dir.file("no-kernels.txt"));
    answers.push_back(answer);
  }
  expectDigests("mutant", answers, "import/mutated_digests.txt");
}

}  // namespace
