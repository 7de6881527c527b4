#include "tools/qvdiag/RenderCommand.h"

#include <boost/filesystem.hpp>
#include <algorithm>
#include <cctype>

#include "tools/qvdiag/UsageError.h"
#include "views/AtomicFile.h"
#include "views/DiagramGraphBuilder.h"
#include "views/DotWriter.h"
#include "views/HtmlPage.h"
#include "views/IpLayout.h"
#include "views/StoredDiagram.h"
#include "views/SvgRenderer.h"

namespace qvdiag {
namespace {

namespace fs = boost::filesystem;

std::string lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

qvviews::DiagramGraph graphOf(std::string const& diagramFile, std::string const& rtdFile) {
  qvviews::StoredDiagram const diagram = qvviews::StoredDiagram::fromFile(diagramFile);
  qvviews::DiagramGraphBuilder::Options options;
  if (!rtdFile.empty()) options.ipLayout = qvviews::IpLayout::read(rtdFile);
  return qvviews::DiagramGraphBuilder(std::move(options)).build(diagram.root());
}

}  // namespace

RenderCommand::Format RenderCommand::formatFor(std::string const& format,
                                               std::string const& outputFile) {
  if (!format.empty()) {
    std::string const word = lowered(format);
    if (word == "svg") return Format::kSvg;
    if (word == "dot") return Format::kDot;
    if (word == "html") return Format::kHtml;
    throw UsageError("--format must be svg, dot or html, not '" + format + "'");
  }
  if (outputFile.empty() || outputFile == "-") return Format::kSvg;
  std::string const extension = lowered(fs::path(outputFile).extension().string());
  if (extension == ".svg") return Format::kSvg;
  if (extension == ".dot" || extension == ".gv") return Format::kDot;
  if (extension == ".html" || extension == ".htm") return Format::kHtml;
  throw UsageError("cannot tell the format from the name '" + outputFile +
                   "': give --format svg, dot or html");
}

std::string RenderCommand::draw(std::string const& diagramFile, std::string const& rtdFile,
                                Format format) {
  qvviews::DiagramGraph const graph = graphOf(diagramFile, rtdFile);
  std::string const dot = qvviews::DotWriter::write(graph);
  if (format == Format::kDot) return dot;
  std::string const svg = qvviews::SvgRenderer::render(dot);
  if (format == Format::kSvg) return svg;
  return qvviews::HtmlPage::write(graph, svg);
}

void RenderCommand::run(Options const& options, std::ostream& out) {
  Format const format = formatFor(options.format, options.outputFile);
  std::string const picture = draw(options.diagramFile, options.rtdFile, format);
  if (options.outputFile.empty() || options.outputFile == "-") {
    out << picture << std::flush;
    return;
  }
  qvviews::AtomicFile::write(options.outputFile, picture);
}

RenderCommand::Written RenderCommand::writeBeside(std::string const& diagramFile,
                                                  std::string const& rtdFile) {
  qvviews::DiagramGraph const graph = graphOf(diagramFile, rtdFile);
  std::string const svg = qvviews::SvgRenderer::render(qvviews::DotWriter::write(graph));
  fs::path const base = fs::path(diagramFile).replace_extension();
  Written written{base.string() + ".svg", base.string() + ".html"};
  qvviews::AtomicFile::write(written.svgFile, svg);
  qvviews::AtomicFile::write(written.htmlFile, qvviews::HtmlPage::write(graph, svg));
  return written;
}

}  // namespace qvdiag
