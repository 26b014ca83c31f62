#include "tests/VornMac/Window/CodeReader.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace vorn::testing {

std::optional<std::string> codeIn(const QImage& picture)
{
    const QString program = QStandardPaths::findExecutable("zbarimg");
    if (program.isEmpty()) return std::nullopt;
    const QTemporaryDir folder;
    const QString file = folder.filePath("code.png");
    if (!picture.save(file)) return "";
    QProcess reader;
    reader.start(program, {"--quiet", "--nodbus", "--raw", "-Sdisable", "-Sqrcode.enable", file});
    reader.waitForFinished();
    QByteArray text = reader.readAllStandardOutput();
    if (text.endsWith('\n')) text.chop(1);
    return text.toStdString();
}

} // namespace vorn::testing
