#include "views/FlowReportData.h"

#include <cstdio>
#include <regex>
#include <stdexcept>

namespace qvviews {

namespace {

// The section titles and their order, as the report writes them.
char const* const kTitles[] = {"Kernel and compute unit information",
                               "Interface Connections",
                               "Clock Connections",
                               "Reset Connections",
                               "Clock Summary",
                               "SLR Utilization per Compute Unit",
                               "Compute Unit Utilization per SLR"};
constexpr int kSections = 7;
constexpr std::size_t kHeadingWidth = 68;

std::vector<std::string> linesOf(std::string const& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t const end = text.find('\n', start);
    if (end == std::string::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

bool isRule(std::string const& line, char c, std::size_t length) {
  return line.size() == length && length > 0 && line.find_first_not_of(c) == std::string::npos;
}

[[noreturn]] void fail(std::size_t index, std::string const& what) {
  throw std::runtime_error("line " + std::to_string(index + 1) + ": " + what);
}

std::string trimmed(std::string const& text) {
  std::size_t const first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  std::size_t const last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

// The section number whose title `line` is, with its underline below; 0 for none.
int sectionAt(std::vector<std::string> const& lines, std::size_t i) {
  for (int n = 1; n <= kSections; ++n) {
    std::string const title = std::to_string(n) + ". " + kTitles[n - 1];
    if (lines[i] == title && i + 1 < lines.size() && isRule(lines[i + 1], '=', title.size()))
      return n;
  }
  return 0;
}

// The cells of a table line, cut at the border's "+" positions (a cell may hold "|").
std::vector<std::string> cellsOf(std::string const& line, std::vector<std::size_t> const& edges,
                                 std::size_t index) {
  if (line.size() != edges.back() + 1 || line.front() != '|' || line.back() != '|')
    fail(index, "a table line that does not match its border");
  std::vector<std::string> cells;
  for (std::size_t c = 0; c + 1 < edges.size(); ++c) {
    if (line[edges[c]] != '|') fail(index, "a table line that does not match its border");
    cells.push_back(trimmed(line.substr(edges[c] + 1, edges[c + 1] - edges[c] - 1)));
  }
  return cells;
}

void writeString(std::ostream& out, std::string const& text) {
  out << '"';
  for (unsigned char c : text) {
    if (c == '"' || c == '\\') {
      out << '\\' << static_cast<char>(c);
    } else if (c < 0x20) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
      out << buffer;
    } else {
      out << static_cast<char>(c);
    }
  }
  out << '"';
}

// A value of the report as JSON: the report's marks of absent data and an empty text are null;
// a count, a frequency ("300.00 MHz") or a percentage is the number exactly as printed, so that
// no digit is gained or lost; anything else is the text.
void writeValue(std::ostream& out, std::string const& text) {
  static std::regex const number("-?[0-9]+(\\.[0-9]+)?");
  static std::regex const megahertz("(-?[0-9]+(\\.[0-9]+)?) MHz");
  if (text.empty() || text == "N/A" || text == "not_specified") {
    out << "null";
    return;
  }
  std::smatch match;
  if (std::regex_match(text, number)) {
    out << text;
    return;
  }
  if (std::regex_match(text, match, megahertz)) {
    out << match[1].str();
    return;
  }
  writeString(out, text);
}

}  // namespace

FlowReportData FlowReportData::fromText(std::string const& text) {
  std::vector<std::string> const lines = linesOf(text);
  FlowReportData data;
  if (lines.size() < 6 || !isRule(lines[0], '=', kHeadingWidth) ||
      lines[1].rfind("Version:    ", 0) != 0 || lines[2].rfind("Copyright:  ", 0) != 0 ||
      lines[3].rfind("Created:    ", 0) != 0 || !isRule(lines[4], '=', kHeadingWidth) ||
      !lines[5].empty()) {
    fail(0, "no flow report heading");
  }
  data.version_ = lines[1].substr(12);
  data.copyright_ = lines[2].substr(12);
  data.created_ = lines[3].substr(12);
  for (int n = 1; n <= kSections; ++n) {
    Section section;
    section.number = n;
    section.title = kTitles[n - 1];
    data.sections_.push_back(section);
  }

  Section* section = nullptr;
  std::string group;
  std::string label;  // a line waiting for the table below it
  bool inBlock = false;
  int lastSection = 0;
  for (std::size_t i = 6; i < lines.size(); ++i) {
    std::string const& line = lines[i];
    if (int const n = sectionAt(lines, i)) {
      if (n <= lastSection) fail(i, "section " + std::to_string(n) + " out of order");
      lastSection = n;
      section = &data.sections_[static_cast<std::size_t>(n - 1)];
      section->written = true;
      group.clear();
      label.clear();
      inBlock = false;
      ++i;  // the underline
      continue;
    }
    if (section == nullptr) fail(i, "text before the first section");
    if (line.empty()) {
      inBlock = false;
      continue;
    }
    if (line.front() == '+') {
      std::vector<std::size_t> edges;
      for (std::size_t p = 0; p < line.size(); ++p) {
        if (line[p] == '+')
          edges.push_back(p);
        else if (line[p] != '-')
          fail(i, "a table border with '" + line.substr(p, 1) + "'");
      }
      if (edges.size() < 2 || edges.back() != line.size() - 1) fail(i, "a broken table border");
      if (i + 2 >= lines.size() || lines[i + 2] != line) fail(i, "a table without its header");
      Item table;
      table.isTable = true;
      table.group = group;
      // A one-line block just above the table is its label ("Compute Unit: vadd_1").
      if (inBlock && !section->items.empty() && !section->items.back().isTable &&
          section->items.back().values.size() == 1 && label.empty()) {
        auto const& only = section->items.back().values.front();
        label = only.first + ": " + only.second;
        section->items.pop_back();
      }
      table.label = label;
      label.clear();
      table.columns = cellsOf(lines[i + 1], edges, i + 1);
      std::size_t j = i + 3;
      for (; j < lines.size() && lines[j] != line; ++j)
        table.rows.push_back(cellsOf(lines[j], edges, j));
      if (j == lines.size()) fail(i, "a table without its closing border");
      section->items.push_back(std::move(table));
      i = j;
      inBlock = false;
      continue;
    }
    if (i + 1 < lines.size() && isRule(lines[i + 1], '-', line.size())) {
      group = line;  // a sub-heading of section 2
      ++i;
      inBlock = false;
      continue;
    }
    std::size_t const colon = line.find(": ");
    if (colon == std::string::npos) {
      label = line;  // "PL", above its table
      continue;
    }
    if (!inBlock) {
      Item block;
      block.group = group;
      section->items.push_back(std::move(block));
      inBlock = true;
    }
    section->items.back().values.emplace_back(line.substr(0, colon), line.substr(colon + 2));
  }
  if (!label.empty()) fail(lines.size() - 1, "'" + label + "' stands above no table");
  return data;
}

void FlowReportData::writeJson(std::ostream& out) const {
  out << "{\n  \"version\": ";
  writeString(out, version_);
  out << ",\n  \"copyright\": ";
  writeString(out, copyright_);
  out << ",\n  \"created\": ";
  writeString(out, created_);
  out << ",\n  \"sections\": [";
  for (std::size_t s = 0; s < sections_.size(); ++s) {
    Section const& section = sections_[s];
    out << (s ? ",\n" : "\n") << "    {\"number\": " << section.number << ", \"title\": ";
    writeString(out, section.title);
    out << ", \"written\": " << (section.written ? "true" : "false") << ", \"items\": [";
    for (std::size_t i = 0; i < section.items.size(); ++i) {
      Item const& item = section.items[i];
      out << (i ? ",\n" : "\n") << "      {\"group\": ";
      if (item.group.empty())
        out << "null";
      else
        writeString(out, item.group);
      if (!item.isTable) {
        out << ", \"values\": {";
        for (std::size_t v = 0; v < item.values.size(); ++v) {
          out << (v ? ", " : "");
          writeString(out, item.values[v].first);
          out << ": ";
          writeValue(out, item.values[v].second);
        }
        out << "}}";
        continue;
      }
      out << ", \"label\": ";
      if (item.label.empty())
        out << "null";
      else
        writeString(out, item.label);
      out << ",\n       \"columns\": [";
      for (std::size_t c = 0; c < item.columns.size(); ++c) {
        out << (c ? ", " : "");
        writeString(out, item.columns[c]);
      }
      out << "],\n       \"rows\": [";
      for (std::size_t r = 0; r < item.rows.size(); ++r) {
        out << (r ? ",\n        [" : "\n        [");
        for (std::size_t c = 0; c < item.rows[r].size(); ++c) {
          out << (c ? ", " : "");
          writeValue(out, item.rows[r][c]);
        }
        out << "]";
      }
      out << (item.rows.empty() ? "]}" : "\n       ]}");
    }
    out << (section.items.empty() ? "]}" : "\n    ]}");
  }
  out << "\n  ]\n}\n";
}

}  // namespace qvviews
