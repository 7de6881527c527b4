#include "views/SvgRenderer.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Golden.h"
#include "tests/support/StoredDiagrams.h"
#include "views/DiagramGraphBuilder.h"
#include "views/DotWriter.h"
#include "views/IpLayout.h"

namespace qvviews {
namespace {

class SvgRendererTest : public ::testing::Test {
 protected:
  struct DocumentFree {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
  };
  using Document = std::unique_ptr<xmlDoc, DocumentFree>;

  // Parses `svg` as XML, as strictly as libxml2 parses: any error leaves the result empty.
  static Document parse(std::string const& svg) {
    return Document(xmlReadMemory(svg.data(), static_cast<int>(svg.size()), "picture.svg",
                                  nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR |
                                               XML_PARSE_NOWARNING));
  }

  // The `id` attribute of every <g> element whose class is `cls` (or starts with it and a space).
  static std::vector<std::string> groupIds(xmlNode* node, std::string const& cls) {
    std::vector<std::string> ids;
    collect(node, cls, ids);
    return ids;
  }

  static void collect(xmlNode* node, std::string const& cls, std::vector<std::string>& ids) {
    for (xmlNode* each = node; each != nullptr; each = each->next) {
      if (each->type != XML_ELEMENT_NODE) continue;
      if (std::string(reinterpret_cast<char const*>(each->name)) == "g") {
        std::string const classes = attribute(each, "class");
        if (classes == cls || classes.rfind(cls + " ", 0) == 0) ids.push_back(attribute(each, "id"));
      }
      collect(each->children, cls, ids);
    }
  }

  static std::vector<std::string> sorted(std::vector<std::string> ids) {
    std::sort(ids.begin(), ids.end());
    return ids;
  }

  static std::string attribute(xmlNode* node, char const* name) {
    xmlChar* value = xmlGetProp(node, reinterpret_cast<xmlChar const*>(name));
    if (value == nullptr) return "";
    std::string text(reinterpret_cast<char const*>(value));
    xmlFree(value);
    return text;
  }

  static std::string exampleDot() {
    DiagramGraphBuilder::Options options;
    options.ipLayout = IpLayout::read(qvtest::exampleFile("design/vector_pipeline.rtd.json"));
    return DotWriter::write(DiagramGraphBuilder(options).build(
        exampleDiagram()));
  }
};

TEST_F(SvgRendererTest, ExampleSvgHoldsOneElementPerComputeUnitAndMemoryWithStableIds) {
  std::string const svg = SvgRenderer::render(exampleDot());
  Document const document = parse(svg);
  ASSERT_NE(document, nullptr) << svg;
  xmlNode* root = xmlDocGetRootElement(document.get());
  EXPECT_EQ(std::string(reinterpret_cast<char const*>(root->name)), "svg");
  // Graphviz writes them in an order of its own: what counts is that each is there once.
  EXPECT_EQ(sorted(groupIds(root, "node")),
            (std::vector<std::string>{
                "cu:consumer_1", "cu:mmult_1", "cu:mmult_2", "cu:producer_1", "cu:vadd_1",
                "cu:vadd_2", "kernel:consumer", "kernel:mmult", "kernel:producer", "kernel:vadd",
                "mem:DDR[0]", "mem:DDR[1]", "mem:DDR[2]", "mem:DDR[3]", "mem:HBM[0]",
                "mem:HBM[1]", "mem:HBM[2]", "mem:HBM[3]", "mem:HBM[4]", "mem:HBM[5]",
                "mem:HBM[6]", "mem:HBM[7]", "mem:HBM[8..31]"}));
  EXPECT_EQ(sorted(groupIds(root, "cluster")), (std::vector<std::string>{"slr:SLR0", "slr:SLR1"}));
  std::vector<std::string> const edges = sorted(groupIds(root, "edge"));
  EXPECT_EQ(edges.size(), 18u);
  EXPECT_EQ(std::count(edges.begin(), edges.end(), "edge:cu:producer_1->cu:consumer_1"), 1);
  EXPECT_EQ(std::count(edges.begin(), edges.end(), "edge:cu:vadd_1->mem:DDR[0]"), 1);
}

TEST_F(SvgRendererTest, EmptyDiagramIsAValidPictureThatSaysSo) {
  std::string const svg = SvgRenderer::render(DotWriter::write(DiagramGraphBuilder().build(
      freshDiagram())));
  Document const document = parse(svg);
  ASSERT_NE(document, nullptr) << svg;
  EXPECT_EQ(groupIds(xmlDocGetRootElement(document.get()), "node"),
            std::vector<std::string>{"note:empty"});
  EXPECT_NE(svg.find(">This diagram has no kernels, compute units or memories.</text>"),
            std::string::npos)
      << svg;
}

TEST_F(SvgRendererTest, TextThatIsNotDotIsRefusedWithGraphvizsReason) {
  try {
    SvgRenderer::render("digraph { a -> ; }");
    FAIL() << "no exception";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "Graphviz: the text is not DOT: Error: syntax error in line 1 near ';'");
  }
  // The failure leaves Graphviz able to draw the next picture.
  EXPECT_NE(SvgRenderer::render("digraph { a -> b; }").find("<svg"), std::string::npos);
}

TEST_F(SvgRendererTest, RendersFromSeveralThreadsAlike) {
  std::string const dot = exampleDot();
  std::string const expected = SvgRenderer::render(dot);
  std::vector<std::string> results(4);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&dot, &results, i] { results[i] = SvgRenderer::render(dot); });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::string const& result : results) EXPECT_EQ(result, expected);
}

TEST_F(SvgRendererTest, LayoutOnlyLaysOutAndRefusesAsRenderDoes) {
  EXPECT_NO_THROW(SvgRenderer::layoutOnly(exampleDot()));
  EXPECT_THROW(SvgRenderer::layoutOnly("graph {"), std::runtime_error);
}

}  // namespace
}  // namespace qvviews
