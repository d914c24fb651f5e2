#include "tools/velora/report_html.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>

#include "authoring/TypeNames.h"
#include "authoring/pack_text.h"
#include "authoring/print_modes.h"

namespace velora::tools {
namespace {

using namespace authoring;

// Colours follow the system's light or dark setting; a wide table scrolls in its own box.
constexpr char kStyle[] = R"(
:root { color-scheme: light dark; --paper: #fcfcfa; --ink: #1c1e21; --dim: #5d636b; --line: #d9dce0;
  --panel: #f2f3f1; --accent: #1b6ca8; --bad: #b3261e; --good: #1d7a3f; }
@media (prefers-color-scheme: dark) { :root { --paper: #16181b; --ink: #e6e8ea; --dim: #9aa1a9;
  --line: #33383e; --panel: #1f2226; --accent: #6cb6ee; --bad: #ff8a80; --good: #6fd08c; } }
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 1340px; padding: 1.5rem 1rem 4rem; background: var(--paper);
  color: var(--ink); font: 15px/1.5 system-ui, sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .25rem; } h2 { font-size: 1.15rem; margin: 2.5rem 0 .5rem; }
h3 { font-size: 1rem; margin: 1.5rem 0 .25rem; font-weight: 600; }
p { margin: .25rem 0 .75rem; color: var(--dim); max-width: 70ch; }
a { color: var(--accent); }
.scroll { overflow-x: auto; border: 1px solid var(--line); border-radius: 6px; }
table { border-collapse: collapse; width: 100%; font-size: .93em; font-variant-numeric: tabular-nums; }
th, td { padding: .35rem .7rem; text-align: right; white-space: nowrap;
  border-bottom: 1px solid var(--line); }
th:first-child, td:first-child { text-align: left; }
td.text { white-space: normal; text-align: left; }
tr:last-child td { border-bottom: 0; }
th { background: var(--panel); font-weight: 600; }
th button { all: unset; cursor: pointer; } th button:focus-visible { outline: 2px solid var(--accent); }
th[aria-sort=ascending] button::after { content: " \25B2"; }
th[aria-sort=descending] button::after { content: " \25BC"; }
.good { color: var(--good); } .bad { color: var(--bad); }
figure { margin: .5rem 0; } figcaption { color: var(--dim); font-size: .85rem; }
img { display: block; width: 100%; max-width: 918px; height: auto; image-rendering: pixelated;
  border-radius: 3px; }
.chart { overflow-x: auto; }
svg { display: block; width: 100%; min-width: 560px; max-width: 760px; height: auto; font: 12px system-ui, sans-serif; }
svg text { fill: var(--dim); } svg .grid { stroke: var(--line); } svg .axis { stroke: var(--dim); }
svg .thin { fill: none; stroke: var(--dim); stroke-opacity: .45; }
svg .mean { fill: none; stroke: var(--accent); stroke-width: 2.5; }
svg circle { fill: var(--accent); } svg .small { fill: var(--dim); fill-opacity: .6; }
details { border-left: 2px solid var(--line); padding-left: .8rem; margin: .2rem 0; }
summary { cursor: pointer; } summary:hover { color: var(--accent); }
pre { margin: .3rem 0; white-space: pre-wrap; font: 13px/1.45 ui-monospace, monospace;
  overflow-wrap: anywhere; }
@media (max-width: 600px) { body { padding: 1rem .7rem 3rem; font-size: 14px; } }
)";

constexpr char kScript[] = R"(
for (const table of document.querySelectorAll('table.sortable')) {
  const heads = [...table.tHead.rows[0].cells];
  heads.forEach((head, column) => head.querySelector('button').addEventListener('click', () => {
    const down = head.getAttribute('aria-sort') === 'ascending';
    heads.forEach(other => other.removeAttribute('aria-sort'));
    head.setAttribute('aria-sort', down ? 'descending' : 'ascending');
    const body = table.tBodies[0];
    const key = row => row.cells[column].dataset.key ?? row.cells[column].textContent;
    const rows = [...body.rows].sort((a, b) => {
      const x = key(a), y = key(b), number = x !== '' && y !== '' && !isNaN(x) && !isNaN(y);
      return number ? x - y : x.localeCompare(y);
    });
    if (down) rows.reverse();
    body.append(...rows);
  }));
}
)";

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Fixed(double value, int digits) {
  char text[40];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string Base64(const Bytes& bytes) {
  static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t left = std::min<std::size_t>(3, bytes.size() - i);
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < left ? bytes[i + k] : 0u);
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= left ? digits[group >> (18 - 6 * k) & 63] : '=';
    }
  }
  return text;
}

// ---- the table of print modes

// A cell shows a number and sorts by it.
std::string Cell(double value, int digits) {
  return "<td data-key=\"" + Fixed(value, 6) + "\">" + Fixed(value, digits) + "</td>";
}

void WriteHead(std::ostream& out, const std::vector<const char*>& names) {
  out << "<div class=\"scroll\"><table class=\"sortable\"><thead><tr>";
  for (const char* name : names) {
    out << "<th scope=\"col\"><button type=\"button\">" << name << "</button></th>";
  }
  out << "</tr></thead><tbody>\n";
}

void WriteModes(std::ostream& out, const Report& report) {
  if (report.modes.empty()) return;
  const bool has_color =
      std::any_of(report.modes.begin(), report.modes.end(),
                  [](const ReportMode& mode) { return mode.errors && mode.errors->has_color; });
  out << "<h2>Print modes</h2>\n<p>Bytes are what the packs have for a table alone. Errors are "
         "those of the rebuilt table against the wanted one. Click a column's head "
         "to sort.</p>\n";
  std::vector<const char*> heads{"print mode", "bytes", "% of raw", "values that differ",
                                 "ink mean",   "99 %",  "largest"};
  if (has_color) {
    heads.insert(heads.end(), {"CIEDE2000 mean", "99 %", "largest", "CIE76 mean"});
  }
  heads.push_back("time, &micro;s");
  WriteHead(out, heads);
  for (std::size_t i = 0; i < report.modes.size(); ++i) {
    const ReportMode& mode = report.modes[i];
    out << "<tr><td><a href=\"#mode-" << i << "\">" << Escaped(mode.name) << "</a></td>"
        << Cell(mode.pack_bytes, 0)
        << Cell(mode.raw_bytes == 0 ? 0 : 100.0 * mode.pack_bytes / mode.raw_bytes, 1);
    if (!mode.is_rebuilt) {
      out << "<td class=\"bad\" data-key=\"\">refused</td>";
    } else if (mode.bytes.differing == 0) {
      out << "<td class=\"good\" data-key=\"0\">equal</td>";
    } else {
      out << Cell(mode.bytes.differing, 0);
    }
    out << Cell(mode.bytes.mean, 3)
        << (mode.errors ? Cell(mode.errors->ink.p99, 1) : "<td data-key=\"\">&ndash;</td>")
        << Cell(mode.bytes.largest, 0);
    if (has_color) {
      if (mode.errors && mode.errors->has_color) {
        out << Cell(mode.errors->cie2000.mean, 3) << Cell(mode.errors->cie2000.p99, 2)
            << Cell(mode.errors->cie2000.largest, 2) << Cell(mode.errors->cie76.mean, 3);
      } else {
        for (int k = 0; k < 4; ++k) out << "<td data-key=\"\">&ndash;</td>";
      }
    }
    out << Cell(mode.microseconds, 0) << "</tr>\n";
  }
  out << "</tbody></table></div>\n";
}

void WritePictures(std::ostream& out, const Report& report) {
  for (std::size_t i = 0; i < report.modes.size(); ++i) {
    const ReportMode& mode = report.modes[i];
    out << "<section id=\"mode-" << i << "\"><h3>" << Escaped(mode.name) << "</h3>\n";
    if (!mode.is_rebuilt) out << "<p class=\"bad\">" << Escaped(mode.refusal) << "</p>\n";
    for (const ReportPicture& picture : mode.pictures) {
      out << "<figure><img alt=\"" << Escaped(picture.caption) << "\" src=\"data:image/png;base64,"
          << Base64(picture.png) << "\"><figcaption>" << Escaped(picture.caption)
          << "</figcaption></figure>\n";
    }
    out << "</section>\n";
  }
}

// ---- the chart

// Steps of 1, 2 or 5 times a power of ten, some five of them up to a value.
double NiceStep(double largest) {
  const double rough = std::max(largest, 1e-9) / 5;
  const double power = std::pow(10, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= rough) return factor * power;
  }
  return 10 * power;
}

struct Chart {
  static constexpr int kWidth = 760, kHeight = 380;
  static constexpr int kLeft = 62, kRight = 20, kTop = 16, kBottom = 48;

  double largest_x = 0, largest_y = 0;

  double X(double value) const { return kLeft + value / largest_x * (kWidth - kLeft - kRight); }
  double Y(double value) const {
    return kHeight - kBottom - value / largest_y * (kHeight - kTop - kBottom);
  }

  void WriteLine(std::ostream& out, const std::vector<ReportPoint>& points,
                 const char* style) const {
    out << "<polyline class=\"" << style << "\" points=\"";
    for (const ReportPoint& point : points) {
      out << Fixed(X(point.bytes), 1) << ',' << Fixed(Y(point.error), 1) << ' ';
    }
    out << "\"/>\n";
  }

  void WriteDots(std::ostream& out, const ReportCurve& curve, double radius,
                 const char* style) const {
    for (const ReportPoint& point : curve.points) {
      out << "<circle class=\"" << style << "\" cx=\"" << Fixed(X(point.bytes), 1) << "\" cy=\""
          << Fixed(Y(point.error), 1) << "\" r=\"" << Fixed(radius, 1) << "\"><title>"
          << Escaped(curve.name + ", " + point.setting) << ": " << Fixed(point.bytes, 0)
          << " bytes, error " << Fixed(point.error, 3) << "</title></circle>\n";
    }
  }
};

// The mean over all tables, setting by setting.
ReportCurve MeanOf(const std::vector<ReportCurve>& curves) {
  ReportCurve mean{"mean of all tables", {}};
  for (std::size_t i = 0; i < curves[0].points.size(); ++i) {
    ReportPoint point{curves[0].points[i].setting, 0, 0};
    for (const ReportCurve& curve : curves) {
      point.bytes += curve.points[i].bytes / static_cast<double>(curves.size());
      point.error += curve.points[i].error / static_cast<double>(curves.size());
    }
    mean.points.push_back(point);
  }
  return mean;
}

void WriteChart(std::ostream& out, const Report& report) {
  if (report.curves.empty() || report.curves[0].points.empty()) return;
  Chart chart;
  for (const ReportCurve& curve : report.curves) {
    for (const ReportPoint& point : curve.points) {
      chart.largest_x = std::max(chart.largest_x, point.bytes * 1.05);
      chart.largest_y = std::max(chart.largest_y, point.error * 1.08);
    }
  }
  if (chart.largest_y <= 0) chart.largest_y = 1;
  out << "<h2>Bytes against error</h2>\n<p>What the packs would have for a table at other "
         "settings. The strong line is the mean of all tables; point at a dot for its numbers."
         "</p>\n<div class=\"chart\"><svg id=\"chart\" role=\"img\" aria-label=\"Bytes a table "
         "against error\" "
         "viewBox=\"0 0 "
      << Chart::kWidth << ' ' << Chart::kHeight << "\">\n";
  const double step_x = NiceStep(chart.largest_x), step_y = NiceStep(chart.largest_y);
  for (double x = 0; x <= chart.largest_x; x += step_x) {
    out << "<text text-anchor=\"middle\" x=\"" << Fixed(chart.X(x), 1) << "\" y=\""
        << Chart::kHeight - Chart::kBottom + 18 << "\">" << Fixed(x, 0) << "</text>\n";
  }
  for (double y = 0; y <= chart.largest_y; y += step_y) {
    const std::string at = Fixed(chart.Y(y), 1);
    out << "<line class=\"grid\" x1=\"" << Chart::kLeft << "\" x2=\""
        << Chart::kWidth - Chart::kRight << "\" y1=\"" << at << "\" y2=\"" << at << "\"/>"
        << "<text text-anchor=\"end\" x=\"" << Chart::kLeft - 8 << "\" y=\""
        << Fixed(chart.Y(y) + 4, 1) << "\">"
        << Fixed(y, step_y < 0.1 ? 2
                    : step_y < 1 ? 1
                                 : 0)
        << "</text>\n";
  }
  const int floor = Chart::kHeight - Chart::kBottom;
  out << "<line class=\"axis\" x1=\"" << Chart::kLeft << "\" x2=\"" << Chart::kWidth - Chart::kRight
      << "\" y1=\"" << floor << "\" y2=\"" << floor << "\"/>\n"
      << "<text text-anchor=\"middle\" x=\"" << (Chart::kLeft + Chart::kWidth) / 2 << "\" y=\""
      << Chart::kHeight - 8 << "\">bytes a table</text>\n"
      << "<text text-anchor=\"middle\" transform=\"translate(14 " << floor / 2 << ") rotate(-90)\">"
      << Escaped(report.error_name) << "</text>\n";
  for (const ReportCurve& curve : report.curves) {
    chart.WriteLine(out, curve.points, "thin");
    chart.WriteDots(out, curve, 2.5, "small");
  }
  const ReportCurve mean = MeanOf(report.curves);
  chart.WriteLine(out, mean.points, "mean");
  chart.WriteDots(out, mean, 4, "dot");
  for (const ReportPoint& point : mean.points) {
    out << "<text x=\"" << Fixed(chart.X(point.bytes) + 6, 1) << "\" y=\""
        << Fixed(chart.Y(point.error) - 8, 1) << "\">" << Escaped(point.setting) << "</text>\n";
  }
  out << "</svg></div>\n";
}

// ---- sharing and structure

void WriteShared(std::ostream& out, const Report& report) {
  out << "<h2>Shared</h2>\n";
  if (report.shared.empty()) {
    out << "<p>No component and no bytes serve more than one print mode.</p>\n";
    return;
  }
  out << "<p>Components that several print modes use, and bytes that several components have. A "
         "pack stores them once.</p>\n";
  WriteHead(out, {"what", "bytes", "users", "who"});
  for (const ReportShared& shared : report.shared) {
    out << "<tr><td class=\"text\">" << Escaped(shared.what) << "</td>" << Cell(shared.bytes, 0)
        << Cell(static_cast<double>(shared.users.size()), 0) << "<td class=\"text\">";
    for (std::size_t i = 0; i < shared.users.size(); ++i) {
      out << (i == 0 ? "" : "; ") << Escaped(shared.users[i]);
    }
    out << "</td></tr>\n";
  }
  out << "</tbody></table></div>\n";
}

void WriteComponent(std::ostream& out, const Component& component, const TypeNames& names) {
  out << "<details><summary>" << Escaped(ComponentText(component, names)) << "</summary><pre>valid "
      << Escaped(component.condition.Text(names));
  for (const Step& step : component.recipe) out << '\n' << Escaped(StepText(step, names));
  out << "</pre></details>\n";
}

void WritePacks(std::ostream& out, const Report& report) {
  if (report.packs.empty()) return;
  out << "<h2>Packs</h2>\n<p>Header, print modes and components. Print modes are in the caller's "
         "numbers.</p>\n<div id=\"packs\">\n";
  for (const ReportPack& stored : report.packs) {
    const Pack pack = InCallersNumbers(stored.file.pack);
    const TypeNames& names = TypeNames::Of(pack.pipeline);
    out << "<details><summary>" << Escaped(stored.name) << ": " << stored.file.size << " bytes, "
        << pack.components.size() << " components</summary>\n<pre>"
        << Escaped(HeaderText(stored.file)) << "</pre>\n";
    const std::string modes = ModesText(stored.file.pack);
    if (!modes.empty()) {
      out << "<details><summary>Print modes</summary><pre>" << Escaped(modes)
          << "</pre></details>\n";
    }
    std::map<int, std::vector<const Component*>> kinds;
    for (const Component& component : pack.components) kinds[component.kind].push_back(&component);
    for (const auto& [kind, components] : kinds) {
      out << "<details><summary>" << Escaped(names.NameOf(kind)) << " (" << components.size()
          << ")</summary>\n";
      for (const Component* component : components) WriteComponent(out, *component, names);
      out << "</details>\n";
    }
    out << "</details>\n";
  }
  out << "</div>\n";
}

}  // namespace

std::string ReportHtml(const Report& report) {
  int bytes = 0;
  for (const ReportPack& pack : report.packs) bytes += pack.file.size;
  std::ostringstream out;
  out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
      << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      << "<link rel=\"icon\" href=\"data:,\">\n<title>" << Escaped(report.title) << "</title>\n"
      << "<style>" << kStyle << "</style></head>\n<body>\n<h1>" << Escaped(report.title)
      << "</h1>\n<p>" << report.modes.size() << " print modes, " << report.packs.size()
      << " packs of " << bytes << " bytes.</p>\n";
  WriteModes(out, report);
  WriteChart(out, report);
  if (!report.modes.empty()) {
    out << "<h2>Tables</h2>\n<p>The 17 slices of a table along red; in a slice green runs down "
           "and blue to the right.</p>\n";
  }
  WritePictures(out, report);
  WriteShared(out, report);
  WritePacks(out, report);
  out << "<script>" << kScript << "</script>\n</body></html>\n";
  return out.str();
}

}  // namespace velora::tools
