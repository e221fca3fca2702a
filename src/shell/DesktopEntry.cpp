#include "shell/DesktopEntry.h"

#include <map>
#include <vector>

#include "session/Ports.h"
#include "shell/KeyFile.h"

namespace pictavo {

namespace {

/// Characters that an argument may hold only between quotation marks.
constexpr std::string_view kReserved = " \t\n\r\"'\\><~|&;$*?#()`";

/// Those that need a backslash even there.
constexpr std::string_view kEscaped = "\"`$\\";

/// Quotation marks only where they must be: there are programs that open files by these entries and take
/// quotation marks for a part of the path.
std::string Quoted(const std::string& argument) {
    if (argument.find_first_of(kReserved) == std::string::npos) return argument;
    std::string text = "\"";
    for (const char c : argument) {
        if (kEscaped.find(c) != std::string_view::npos) text += '\\';
        text += c;
    }
    return text + "\"";
}

std::string WithDoubledPercents(const std::string& text) {
    std::string doubled;
    for (const char c : text) doubled += c == '%' ? "%%" : std::string(1, c);
    return doubled;
}

/// How every value in the file is written, above the quoting of arguments.
const std::map<char, char>& ValueEscapes() {
    static const std::map<char, char> escapes{{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}};
    return escapes;
}

std::string EscapedValue(const std::string& value) {
    std::string text;
    for (const char c : value) {
        const auto escape = ValueEscapes().find(c);
        text += escape == ValueEscapes().end() ? std::string(1, c) : std::string("\\") + escape->second;
    }
    return text;
}

char Unescaped(char letter) {
    for (const auto& [c, escape] : ValueEscapes())
        if (escape == letter) return c;
    return letter == 's' ? ' ' : letter;
}

std::string UnescapedValue(const std::string& text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        value += isEscape ? Unescaped(text[++i]) : text[i];
    }
    return value;
}

std::string ExecOf(const std::string& command) {
    const bool takesFile = command.ends_with(kFileArgument);
    const std::string program = command.substr(0, command.size() - (takesFile ? kFileArgument.size() : 0));
    return EscapedValue(Quoted(WithDoubledPercents(program))) + (takesFile ? " %f" : "");
}

/// The arguments of an Exec line, without their quoting.
class ExecArguments {
  public:
    explicit ExecArguments(const std::string& exec) {
        for (std::size_t i = 0; i < exec.size(); ++i) i += Take(exec, i);
        End();
    }

    std::vector<std::string> list;

  private:
    /// Returns how many characters more than one were taken.
    std::size_t Take(const std::string& exec, std::size_t at) {
        const char c = exec[at];
        if (isQuoted_ && c == '\\' && at + 1 < exec.size()) {
            argument_ += exec[at + 1];
            return 1;
        }
        if (c == '"') {
            isQuoted_ = !isQuoted_;
            hasBegun_ = true;
        } else if (c == ' ' && !isQuoted_) {
            End();
        } else {
            argument_ += c;
            hasBegun_ = true;
        }
        return 0;
    }

    void End() {
        if (hasBegun_) list.push_back(std::move(argument_));
        argument_.clear();
        hasBegun_ = false;
    }

    std::string argument_;
    bool isQuoted_ = false;
    bool hasBegun_ = false;
};

bool IsFileCode(const std::string& argument) {
    return argument == "%f" || argument == "%F" || argument == "%u" || argument == "%U";
}

std::string WithSinglePercents(const std::string& text) {
    std::string single;
    for (std::size_t i = 0; i < text.size(); ++i) {
        single += text[i];
        if (text.compare(i, 2, "%%") == 0) ++i;
    }
    return single;
}

std::string CommandOfExec(const std::string& exec,
                          const std::function<std::string(const std::string&)>& locate) {
    const std::vector<std::string> arguments = ExecArguments(exec).list;
    if (arguments.empty()) return {};
    const std::string program = WithSinglePercents(arguments.front());
    std::string command = program.find('/') == std::string::npos ? locate(program) : program;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        command +=
            IsFileCode(arguments[i]) ? std::string(kFileArgument) : " " + WithSinglePercents(arguments[i]);
    return command;
}

}  // namespace

std::string DesktopEntryText(const std::string& command, const std::string& type, const std::string& icon) {
    return "[Desktop Entry]\nType=Application\nName=Pictavo\nExec=" + ExecOf(command) + "\n" +
           (icon.empty() ? "" : "Icon=" + icon + "\n") + "NoDisplay=true\nMimeType=" + type + ";\n";
}

std::optional<std::string> CommandOfEntry(const std::string& entry,
                                          const std::function<std::string(const std::string&)>& locate) {
    const auto exec = KeyFile(entry).Value(kDesktopEntry, "Exec");
    if (!exec) return std::nullopt;
    return CommandOfExec(UnescapedValue(*exec), locate);
}

}  // namespace pictavo
