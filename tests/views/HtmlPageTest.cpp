#include "views/HtmlPage.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/Golden.h"
#include "tests/support/StoredDiagrams.h"
#include "views/DiagramGraphBuilder.h"
#include "views/DotWriter.h"
#include "views/IpLayout.h"
#include "views/SvgRenderer.h"

namespace qvviews {
namespace {

class HtmlPageTest : public ::testing::Test {
 protected:
  static DiagramGraph example() {
    DiagramGraphBuilder::Options options;
    options.ipLayout = IpLayout::read(qvtest::exampleFile("design/vector_pipeline.rtd.json"));
    return DiagramGraphBuilder(options).build(
        exampleDiagram());
  }
  static std::string between(std::string const& text, std::string const& open,
                             std::string const& close) {
    std::size_t const start = text.find(open);
    if (start == std::string::npos) return "<no " + open + ">";
    std::size_t const end = text.find(close, start + open.size());
    return text.substr(start + open.size(), end - start - open.size());
  }
};

TEST_F(HtmlPageTest, ExamplePageIsSelfContainedWithTheSvgInline) {
  DiagramGraph const graph = example();
  std::string const svg = SvgRenderer::render(DotWriter::write(graph));
  std::string const page = HtmlPage::write(graph, svg);
  EXPECT_EQ(page.rfind("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n", 0),
            0u);
  EXPECT_EQ(between(page, "<title>", "</title>"),
            "vector_pipeline on qv_accel_h2_gen3x16 - system diagram");
  EXPECT_EQ(between(page, "<span id=\"cu-count\">", "</span>"), "6");
  EXPECT_EQ(between(page, "<span id=\"kernel-count\">", "</span>"), "4");
  EXPECT_EQ(between(page, "<span id=\"memory-count\">", "</span>"), "36");
  // The SVG without its XML prologue, once.
  std::string const inline_ = svg.substr(svg.find("<svg"));
  std::size_t const at = page.find(inline_);
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(page.find(inline_, at + 1), std::string::npos);
  EXPECT_EQ(page.find("<?xml"), std::string::npos);
  // Nothing is fetched: no external script, style, image, font or frame.
  for (char const* fetch : {"<script src", "<link", "@import", "url(", "<img", "<iframe",
                            "fetch(", "XMLHttpRequest", "https://"}) {
    EXPECT_EQ(page.find(fetch), std::string::npos) << fetch;
  }
  EXPECT_NE(page.find("<script type=\"application/json\" id=\"diagram-data\">{\"title\":"
                      "\"vector_pipeline on qv_accel_h2_gen3x16\",\"notes\":[],\"nodes\":{"),
            std::string::npos);
  EXPECT_NE(page.find("<aside id=\"legend\" aria-label=\"Legend\"><h2>Legend</h2><ul><li><span "
                      "class=\"swatch mem\" style=\"background:#cfe2f3\"></span>DDR4 memory</li>"
                      "<li><span class=\"swatch mem\" style=\"background:#d9ead3\"></span>HBM "
                      "memory</li>"),
            std::string::npos);
  EXPECT_EQ(page.substr(page.size() - 26), "</script>\n</body>\n</html>\n");
}

TEST_F(HtmlPageTest, ComputeUnitDataHoldsWhatThePanelShows) {
  std::string const json = HtmlPage::json(example());
  EXPECT_NE(json.find("\"cu:mmult_2\":{\"kind\":\"cu\",\"name\":\"mmult_2\",\"cluster\":"
                      "\"slr:SLR0\",\"kernel\":\"mmult\",\"baseAddress\":\"0x1c30000\",\"slr\":"
                      "\"SLR0\",\"slrFrom\":\"resources\",\"clocks\":[{\"pin\":\"ap_clk\","
                      "\"clockId\":\"0\",\"platformClock\":\"clk_kernel_00\",\"requested\":300,"
                      "\"achieved\":300,\"platform\":300},{\"pin\":\"ap_clk_2\",\"clockId\":\"1\","
                      "\"platformClock\":\"clk_kernel_01\",\"requested\":0,\"achieved\":0,"
                      "\"platform\":500}],\"resources\":[{\"state\":\"Synthesized\",\"amounts\":"
                      "[{\"resource\":\"LUT\",\"used\":\"18960\",\"available\":\"369600\","
                      "\"percent\":5.12987}"),
            std::string::npos)
      << json;
  EXPECT_NE(json.find("\"mem:HBM[8..31]\":{\"kind\":\"memgroup\",\"name\":\"HBM[8..31]\","
                      "\"cluster\":\"slr:SLR0\",\"memoryType\":\"HBM\",\"slr\":\"SLR0\","
                      "\"baseAddress\":\"\",\"size\":\"6 GiB\",\"used\":false,\"banks\":24,"
                      "\"tags\":[\"HBM[8]\","),
            std::string::npos)
      << json;
  EXPECT_NE(json.find("{\"id\":\"edge:cu:vadd_1-\\u003emem:DDR[0]\",\"kind\":\"memory\",\"from\":"
                      "\"cu:vadd_1\",\"to\":\"mem:DDR[0]\",\"arguments\":[\"in1\",\"in2\"]}"),
            std::string::npos)
      << json;
}

TEST_F(HtmlPageTest, NamesCannotCloseTheScriptOrBreakTheMarkup) {
  EXPECT_EQ(HtmlPage::jsonString("</script><b>\"x\\\n\x01"),
            "\"\\u003c/script\\u003e\\u003cb\\u003e\\\"x\\\\\\n\\u0001\"");
  EXPECT_EQ(HtmlPage::escapeHtml("<a href='x'>&\"</a>"),
            "&lt;a href=&#39;x&#39;&gt;&amp;&quot;&lt;/a&gt;");
  DiagramGraph graph;
  graph.title = "</title><script>alert(1)</script>";
  DiagramGraph::Node note;
  note.id = "note:empty";
  note.name = "</script>";
  graph.nodes.push_back(note);
  std::string const page = HtmlPage::write(graph, "<svg></svg>");
  EXPECT_EQ(page.find("<script>alert"), std::string::npos);
  EXPECT_NE(page.find("<title>&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt; - system "
                      "diagram</title>"),
            std::string::npos);
  EXPECT_NE(page.find("\"name\":\"\\u003c/script\\u003e\""), std::string::npos);
}

TEST_F(HtmlPageTest, NotesOfThePictureStandAboveIt) {
  DiagramGraph graph;
  graph.notes.push_back("3 connections name no compute unit or memory of this diagram.");
  std::string const page = HtmlPage::write(graph, "<svg></svg>");
  EXPECT_NE(page.find("<ul id=\"notes\"><li>3 connections name no compute unit or memory of "
                      "this diagram.</li></ul>\n<div id=\"stage\">\n<main id=\"view\">\n<svg></svg></main>"),
            std::string::npos);
}

TEST_F(HtmlPageTest, APictureWithoutSvgIsRefused) {
  EXPECT_THROW(HtmlPage::write(DiagramGraph(), "digraph {}"), std::invalid_argument);
}

}  // namespace
}  // namespace qvviews
