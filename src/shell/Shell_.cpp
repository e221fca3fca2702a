#include "shell/Shell_.h"

#include <QProcess>

namespace pictavo {

namespace {

constexpr int kNoTimeLimit = -1;

QString TextOf(const std::filesystem::path& path) {
    const std::u16string text = path.u16string();
    return QString::fromStdU16String(text);
}

}  // namespace

void QtProcessRunner::RunAndWait(const std::filesystem::path& program,
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
