#include "tools/velora/pages.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace velora::tools {
namespace {

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// Text that roff leaves as it is: no line is a request, no hyphen is typeset.
std::string Roff(const std::string& text) {
  std::string escaped;
  bool at_start = true;
  for (const char c : text) {
    if (at_start && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
    at_start = c == '\n';
  }
  return escaped;
}

std::string FirstSentence(const std::string& text) {
  std::string line = text.substr(0, text.find(". "));
  std::replace(line.begin(), line.end(), '\n', ' ');
  while (!line.empty() && line.back() == '.') line.pop_back();
  return line;
}

std::vector<const CLI::App*> VerbsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& app) {
  return app.get_options([](const CLI::Option*) { return true; });
}

void WriteOptions(std::ostream& out, const CLI::App& app, bool positional) {
  for (const CLI::Option* option : OptionsOf(app)) {
    if (option->get_positional() != positional) continue;
    out << ".TP\n.B " << Roff(option->get_name(positional, true)) << '\n'
        << Roff(option->get_description());
    if (!option->get_default_str().empty()) {
      out << " (default: " << Roff(option->get_default_str()) << ')';
    }
    out << '\n';
  }
}

void WriteSection(std::ostream& out, const char* name, const CLI::App& app, bool positional) {
  const std::vector<const CLI::Option*> options = OptionsOf(app);
  if (std::any_of(options.begin(), options.end(), [positional](const CLI::Option* option) {
        return option->get_positional() == positional;
      })) {
    out << ".SH " << name << '\n';
    WriteOptions(out, app, positional);
  }
}

std::string Synopsis(const CLI::App& verb) {
  std::string text = "[options]";
  for (const CLI::Option* option : OptionsOf(verb)) {
    if (!option->get_positional()) continue;
    const std::string name = option->get_name(true, false);
    text += ' ' + name + (option->get_items_expected_max() > 1 ? "..." : "");
  }
  return text;
}

std::string Page(const CLI::App& app, const std::string& title, const std::string& synopsis) {
  std::ostringstream out;
  out << ".TH " << Upper(title) << " 1 \"\" \"velora 1.0.0\" \"User Commands\"\n"
      << ".SH NAME\n"
      << Roff(title) << " \\- " << Roff(FirstSentence(app.get_description())) << '\n'
      << ".SH SYNOPSIS\n.B " << synopsis << '\n'
      << ".SH DESCRIPTION\n"
      << Roff(app.get_description()) << '\n';
  WriteSection(out, "ARGUMENTS", app, true);
  WriteSection(out, "OPTIONS", app, false);
  if (!app.get_footer().empty()) {
    out << ".SH NOTES\n.nf\n" << Roff(app.get_footer()) << "\n.fi\n";
  }
  return out.str();
}

void Add(const Path& path, const std::string& text, Outputs* files) {
  files->Add(path, Bytes(text.begin(), text.end()));
}

std::string LongOptions(const CLI::App& app) {
  std::string names;
  for (const CLI::Option* option : OptionsOf(app)) {
    for (const std::string& name : option->get_lnames()) names += " --" + name;
  }
  return names;
}

std::string Completion(const CLI::App& app) {
  std::ostringstream out;
  out << "# Completion of velora for bash.\n"
      << "_velora() {\n"
      << "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} verb=\n"
      << "  local i kind\n"
      << "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
      << "    if [[ ${COMP_WORDS[i]} != -* ]]; then verb=${COMP_WORDS[i]}; break; fi\n"
      << "  done\n"
      << "  case $before in\n"
      << "    --output | --profile) kind=cmyk ;;\n"
      << "    --source | --rgb) kind=rgb ;;\n"
      << "    --gray) kind=gray ;;\n"
      << "    --intent) COMPREPLY=($(compgen -W 'perceptual relative saturation absolute' -- "
         "\"$word\")); return ;;\n"
      << "  esac\n"
      << "  if [[ $kind ]]; then\n"
      << "    COMPREPLY=($(compgen -W \"$(\"${COMP_WORDS[0]}\" sample --list 2>/dev/null |\n"
      << "      awk -F'\\t' -v kind=\"$kind\" '$1 == kind {print $2}')\" -- \"$word\"))\n"
      << "    return\n"
      << "  fi\n"
      << "  local words=\n"
      << "  case $verb in\n";
  std::string verbs;
  for (const CLI::App* verb : VerbsOf(app)) {
    verbs += ' ' + verb->get_name();
    out << "    " << verb->get_name() << ") words='" << LongOptions(*verb) << "' ;;\n";
  }
  out << "    '') words='" << verbs << LongOptions(app) << "' ;;\n"
      << "  esac\n"
      << "  if [[ $word == -* || -z $verb ]]; then\n"
      << "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
      << "  else\n"
      << "    COMPREPLY=($(compgen -f -- \"$word\"))\n"
      << "  fi\n"
      << "}\n"
      << "complete -o filenames -F _velora velora\n";
  return out.str();
}

}  // namespace

void AddPages(const CLI::App& app, const Path& folder, Outputs* files) {
  std::string main = Page(app, "velora", "velora verb [options] [arguments]");
  main += ".SH VERBS\n";
  std::string others;
  for (const CLI::App* verb : VerbsOf(app)) {
    const std::string title = "velora-" + verb->get_name();
    main +=
        ".TP\n.BR " + Roff(title) + " (1)\n" + Roff(FirstSentence(verb->get_description())) + '\n';
    Add(folder / (title + ".1"),
        Page(*verb, title, "velora " + verb->get_name() + ' ' + Synopsis(*verb)) +
            ".SH SEE ALSO\n.BR velora (1)\n",
        files);
  }
  Add(folder / "velora.1", main, files);
  Add(folder / "velora.bash", Completion(app), files);
}

}  // namespace velora::tools
