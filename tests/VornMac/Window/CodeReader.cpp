#include "tests/VornMac/Window/CodeReader.h"

#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <QStandardPaths>

namespace vorn::testing {

std::optional<std::string> codeIn(const QImage& picture)
{
    const QString program = QStandardPaths::findExecutable("zbarimg");
    if (program.isEmpty()) return std::nullopt;
    const TemporaryFolder folder;
    const std::string file = folder / "code.png";
    if (!picture.save(QString::fromStdString(file))) return "";
    Program reader(program.toStdString(), {"--quiet", "--nodbus", "--raw", "-Sdisable", "-Sqrcode.enable", file});
    reader.exitCode();
    std::string text = reader.output();
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

} // namespace vorn::testing
