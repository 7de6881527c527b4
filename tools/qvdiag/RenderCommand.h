// qvdiag render: a stored diagram as a picture (SVG, DOT) or as the HTML viewer.
#ifndef TOOLS_QVDIAG_RENDERCOMMAND_H_
#define TOOLS_QVDIAG_RENDERCOMMAND_H_

#include <ostream>
#include <string>

namespace qvdiag {

// Reads one stored diagram and writes one picture of it, through the views layer
// (docs/pictures.md). Files are written whole or not at all (qvviews::AtomicFile).
class RenderCommand {
 public:
  enum class Format { kSvg, kDot, kHtml };

  struct Options {
    std::string diagramFile;
    std::string format;      // "svg", "dot", "html", or empty: from the output's name
    std::string outputFile;  // empty or "-": standard output
    std::string rtdFile;     // the run-time data file that made the diagram; may be empty
  };

  // The format asked for: `format` when given, else the output's extension (.svg, .dot or .gv,
  // .html or .htm, in any case), else SVG when the picture goes to standard output. Throws
  // UsageError for another format word, or for an output whose extension names no format when
  // no format is given.
  static Format formatFor(std::string const& format, std::string const& outputFile);

  // The picture of the stored diagram at `diagramFile` in `format`, with the IP layout of
  // `rtdFile` when that is not empty. Throws std::runtime_error naming the file and the reason
  // when either cannot be read or is not what it should be.
  static std::string draw(std::string const& diagramFile, std::string const& rtdFile,
                          Format format);

  // Runs the command: the picture goes to the output file, or to `out` for standard output.
  // Throws UsageError or std::runtime_error as above, and std::runtime_error
  // "cannot write '<file>': <reason>" when the output cannot be written; nothing is left at the
  // output's path then.
  static void run(Options const& options, std::ostream& out);

  // The two pictures that qvdiag build leaves beside the diagram: <dir>/system_diagram.svg and
  // <dir>/system_diagram.html for <dir>/system_diagram.json. Returns their paths in that order.
  struct Written {
    std::string svgFile;
    std::string htmlFile;
  };
  static Written writeBeside(std::string const& diagramFile, std::string const& rtdFile);
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_RENDERCOMMAND_H_
