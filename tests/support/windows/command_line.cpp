#include "tests/support/windows/command_line.h"

#include "zelclr/platform/text.h"

#include <optional>
#include <stdexcept>

namespace tests {

std::wstring CommandLineOf(const std::vector<std::string> &words)
{
  std::wstring line;
  for (const std::string &word : words) {
    line += line.empty() ? L"\"" : L" \"";
    std::size_t backslashes = 0; // doubled before a quote only
    for (const wchar_t character : ZelUtl::WideFromUtf8(word)) {
      if (character == L'"')
        line.append(backslashes + 1, L'\\');
      backslashes = character == L'\\' ? backslashes + 1 : 0;
      line += character;
    }
    line.append(backslashes, L'\\');
    line += L'"';
  }
  return line;
}

ShellCommand ShellCommandOf(const std::string &line)
{
  ShellCommand command;
  std::string *target = nullptr; // of the word at hand; null between words
  std::string file;
  char redirection = 0;
  const auto end = [&] {
    if (redirection != 0 && target != nullptr) {
      (redirection == '<' ? command.input : command.output) = file == "/dev/null" ? "NUL" : file;
      file.clear();
      redirection = 0;
    }
    target = nullptr;
  };
  const auto word = [&]() -> std::string & {
    if (target == nullptr)
      target = redirection != 0 ? &file : &command.words.emplace_back();
    return *target;
  };
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char next = i + 1 < line.size() ? line[i + 1] : '\0';
    if (quote == '\'' ? c == quote : quote == '"' && c == quote)
      quote = 0;
    else if (quote == '\'' || (quote == '"' && c != '\\'))
      word() += c;
    else if (c == '\\' && (quote == 0 || next == '"' || next == '\\' || next == '$'))
      word() += line[++i];
    else if (c == '\\')
      word() += c;
    else if (c == '\'' || c == '"')
      word(), quote = c;
    else if (c == ' ')
      end();
    else if (c == '<' || c == '>')
      end(), redirection = c;
    else if (c == '|' || c == '&' || c == ';' || c == '$' || c == '`')
      throw std::runtime_error("only a shell understands " + line);
    else
      word() += c;
  }
  end();
  return command;
}

} // namespace tests
