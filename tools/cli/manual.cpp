#include "cli/manual.h"

#include <fmt/format.h>

#include <stdexcept>
#include <vector>

namespace kurvo::tools {
namespace {

// Text of man(7): backslashes and minus signs are its own, and so are dots that begin a line.
std::string Roff(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    const bool begins_line = escaped.empty() || escaped.back() == '\n';
    if (begins_line && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\' || c == '-') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::vector<const CLI::App*> Commands(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

// "-o, --output FILE", or "input" of an argument without a name.
std::string Title(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
  for (const std::string& name : option.get_lnames())
    names += (names.empty() ? "--" : ", --") + name;
  if (names.empty()) names = option.get_name(true);
  const bool takes_value = option.get_items_expected_max() > 0;
  return names + (takes_value && !option.get_positional() ? " " + option.get_type_name() : "");
}

// Its options, also those in groups of options, but no groups.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
  std::vector<const CLI::Option*> options;
  for (const CLI::Option* option : command.get_options()) options.push_back(option);
  for (const CLI::App* group : Commands(command)) {
    for (const CLI::Option* option : group->get_options()) options.push_back(option);
  }
  return options;
}

std::string ManualPage(const CLI::App& app) {
  std::string page =
      ".TH KURVO 1\n.SH NAME\nkurvo \\- outlines of drawings as curves\n.SH SYNOPSIS\n"
      ".B kurvo\n.I command\n[arguments]\n.SH DESCRIPTION\n" +
      Roff(app.get_description()) + "\n.SH COMMANDS\n";
  for (const CLI::App* command : Commands(app)) {
    page += ".SS " + Roff(command->get_name()) + "\n" + Roff(command->get_description()) + ".\n";
    for (const CLI::Option* option : OptionsOf(*command)) {
      page += ".TP\n.B " + Roff(Title(*option)) + "\n" + Roff(option->get_description()) + "\n";
    }
    page += ".PP\n" + Roff(command->get_footer()) + "\n";
  }
  return page + ".SH NOTES\n.nf\n" + Roff(app.get_footer()) + "\n.fi\n";
}

std::string OptionWords(const CLI::App& command) {
  std::string words;
  for (const CLI::Option* option : OptionsOf(command)) {
    for (const std::string& name : option->get_snames()) words += " -" + name;
    for (const std::string& name : option->get_lnames()) words += " --" + name;
  }
  return words.empty() ? words : words.substr(1);
}

std::string CommandNames(const CLI::App& app) {
  std::string names;
  for (const CLI::App* command : Commands(app)) names += " " + command->get_name();
  return names.substr(1);
}

// Of a pipe the options are those of the command after the last colon.
std::string BashCompletion(const CLI::App& app) {
  std::string text =
      "# Completion of kurvo for bash; generated from its options.\n"
      "_kurvo() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} options i\n"
      "  if ((COMP_CWORD == 1)); then\n"
      "    COMPREPLY=($(compgen -W \"" +
      CommandNames(app) + " " + OptionWords(app) +
      "\" -- \"$word\"))\n"
      "    return\n"
      "  fi\n"
      "  if [[ $command == pipe ]]; then\n"
      "    command=${COMP_WORDS[3]}\n"
      "    for ((i = 3; i < COMP_CWORD; ++i)); do\n"
      "      if [[ ${COMP_WORDS[i]} == : ]]; then command=${COMP_WORDS[i + 1]}; fi\n"
      "    done\n"
      "  fi\n"
      "  case $command in\n";
  for (const CLI::App* command : Commands(app))
    text += "    " + command->get_name() + ") options=\"" + OptionWords(*command) + "\" ;;\n";
  return text +
         "  esac\n"
         "  if [[ $word == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
         "  else\n"
         "    COMPREPLY=($(compgen -f -- \"$word\"))\n"
         "  fi\n"
         "}\n"
         "complete -o filenames -F _kurvo kurvo\n";
}

// Within single quotes, and with what _arguments takes for its own.
std::string ZshText(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\'') {
      escaped += "'\\''";
    } else {
      if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
      escaped += c;
    }
  }
  return escaped;
}

std::string ZshCompletion(const CLI::App& app) {
  std::string text =
      "#compdef kurvo\n# Completion of kurvo for zsh; generated from its options.\n"
      "local -a commands\ncommands=(\n";
  for (const CLI::App* command : Commands(app)) {
    text += "  '" + command->get_name() + ":" + ZshText(command->get_description()) + "'\n";
  }
  text +=
      ")\nif ((CURRENT == 2)); then\n  _describe command commands\n  return\nfi\n"
      "case $words[2] in\n";
  for (const CLI::App* command : Commands(app)) {
    text += command->get_name() + ")\n  _arguments";
    for (const CLI::Option* option : OptionsOf(*command)) {
      const std::string value = option->get_items_expected_max() > 0
                                    ? ":" + ZshText(option->get_type_name()) + ":_files"
                                    : "";
      for (const std::string& name : option->get_lnames())
        text +=
            " \\\n    '--" + name + "[" + ZshText(option->get_description()) + "]" + value + "'";
      for (const std::string& name : option->get_snames())
        text += " \\\n    '-" + name + "[" + ZshText(option->get_description()) + "]" + value + "'";
    }
    text += " \\\n    '*:file:_files'\n  ;;\n";
  }
  return text + "esac\n";
}

}  // namespace

std::string Generated(const CLI::App& app, const std::string& what) {
  if (what == "man") return ManualPage(app);
  if (what == "bash") return BashCompletion(app);
  if (what == "zsh") return ZshCompletion(app);
  throw std::runtime_error("generate makes man, bash and zsh");
}

}  // namespace kurvo::tools
