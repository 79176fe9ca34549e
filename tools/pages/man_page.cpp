#include "man_page.h"

#include "general_help.h"
#include "note_sections.h"

#include <algorithm>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

// `text` escaped, so that roff shows it unchanged, and users can copy it from the page.
std::string Escape(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;
      case '\'':
        escaped += "\\(aq";
        break;
      case '`':
        escaped += "\\(ga";
        break;
      case '^':
        escaped += "\\(ha";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      case '"':
        escaped += "\\(dq";
        break;
      default:
        escaped += c;
    }
  }
  // A line that begins with a dot would be a request to roff.
  return escaped.starts_with('.') ? "\\&" + escaped : escaped;
}

std::string Bold(std::string_view text) { return "\\fB" + Escape(text) + "\\fR"; }

std::string GetUpperCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

// The title of a page and its section NAME.
std::string GetBegin(const std::string& page, const std::string& purpose) {
  return ".TH " + GetUpperCase(page) +
         " 1 \"\" \"searchpath " SEARCHPATH_VERSION "\" \"User Commands\"\n" + ".SH NAME\n" +
         Escape(page) + " \\- " + Escape(purpose) + '\n';
}

std::string GetHeading(const std::string& title) {
  return ".SH \"" + Escape(GetUpperCase(title)) + "\"\n";
}

// Lines whose breaks roff keeps.
std::string GetLines(const std::vector<std::string>& lines) {
  std::string text = ".nf\n";
  for (const std::string& line : lines) text += Escape(line) + '\n';
  return text + ".fi\n";
}

std::string GetSection(const NoteSection& section) {
  std::string text = section.title.empty() ? ".PP\n" : GetHeading(section.title);
  if (section.IsTable()) return text + GetLines(section.lines);
  for (const std::string& line : section.lines) text += Escape(line) + '\n';
  return text;
}

std::string GetOptions(const std::vector<OptionText>& options) {
  std::string text = GetHeading("Options");
  for (const OptionText& option : options) {
    text += ".TP\n";
    for (const std::string& name : option.names) {
      text += (name == option.names.front() ? "" : ", ") + Bold(name);
    }
    if (!option.valueName.empty()) text += " \\fI" + Escape(option.valueName) + "\\fR";
    text += '\n' + Escape(option.help) + '\n';
    if (option.names.front() == "-h") text += "(The brief help.)\n";
  }
  return text;
}

std::string GetExamples(const std::string& examples) {
  return GetHeading("Examples") + GetLines(SplitIndented(examples));
}

std::string GetEnvironment() {
  std::string text;
  for (const NoteSection& section : SplitNotes(kEnvironmentNotes)) text += GetSection(section);
  return text;
}

}  // namespace

std::string GetPageName(const DescribedCommand& command) {
  std::string name = "searchpath-" + command.name;
  std::ranges::replace(name, ' ', '-');
  return name;
}

std::string GetManPage(const DescribedCommand& command) {
  std::string page = GetBegin(GetPageName(command), command.purpose);
  page += GetHeading("Synopsis") + Bold("searchpath " + command.name) + " [\\fIOPTION\\fR]... " +
          Escape(command.operands) + '\n';
  page += GetHeading("Description") + Escape(command.purpose) + '\n';
  const auto sections = SplitNotes(command.notes);
  for (const NoteSection& section : sections) {
    if (section.title.empty()) page += GetSection(section);
  }
  page += GetOptions(command.options);
  for (const NoteSection& section : sections) {
    if (!section.title.empty()) page += GetSection(section);
  }
  return page + GetEnvironment() + GetExamples(command.examples) + GetHeading("See also") +
         Bold("searchpath") + "(1)\n";
}

std::string GetMainManPage(const std::vector<DescribedCommand>& commands) {
  std::string page = GetBegin("searchpath", kGeneralPurpose);
  page += GetHeading("Synopsis") + Bold("searchpath") +
          " \\fICOMMAND\\fR [\\fIOPTION\\fR]... [\\fIARGUMENT\\fR]...\n" +
          GetHeading("Description") + Escape(kGeneralPurpose) + "\nEach command has a page.\n" +
          GetHeading("Commands");
  for (const DescribedCommand& command : commands) {
    page += ".TP\n" + Bold(GetPageName(command)) + "(1)\n" + Escape(command.purpose) + '\n';
  }
  page += GetHeading("Options") + ".TP\n" + Bold("-h") + ", " + Bold("--help") +
          "\nThe usage and all commands; with examples after " + Bold("--help") + ".\n.TP\n" +
          Bold("-V") + ", " + Bold("--version") + "\nThe version.\n";
  return page + GetEnvironment() + GetExamples(kGeneralExamples);
}

}  // namespace Corvane::PathManagement::tool
