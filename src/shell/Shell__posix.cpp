#include <QProcess>

#include "shell/QtPath.h"
#include "shell/Shell_.h"

namespace pictavo {

namespace {

constexpr int kNoTimeLimit = -1;

/// Absolute, since a bare name would be looked up on PATH and not in the current folder.
QString TextOf(const std::filesystem::path& program) {
    std::error_code ignored;
    return QtPath(std::filesystem::absolute(program, ignored));
}

}  // namespace

void ChildProcessRunner::RunAndWait(const std::filesystem::path& program,
                                    const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(TextOf(program), list);
    process.waitForFinished(kNoTimeLimit);
}

}  // namespace pictavo
