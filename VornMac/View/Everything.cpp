#include "VornMac/View/Everything.h"

#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/UploadText.h"

#include <utility>
#include <variant>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace vorn {

Everything::Everything(AppModel* model, MainContext* context) : model_(model), context_(context)
{
    connect(&messages_, &EverythingList::listedChanged, this, &Everything::listedChanged);
    if (model_ == nullptr) return;
    connect(model_, &AppModel::stepChanged, this, &Everything::close);
    connect(model_, &AppModel::exportResultChanged, this, &Everything::close);
    connect(model_, &AppModel::scanPhaseChanged, this, &Everything::closeUnlessFound);
    connect(model_, &AppModel::copyPhaseChanged, this, &Everything::copyStatusChanged);
}

Everything::~Everything() = default;

bool Everything::isFound() const
{
    return model_ != nullptr && model_->exportResult() && std::holds_alternative<phase::Found>(model_->scanPhase());
}

void Everything::open()
{
    if (isOpen_ || !isFound()) return;
    const AppModel::ExportResult& found = model_->exportResult();
    leftOut_ = {};
    for (const LeftOutRow& row : leftOutRows(found->skipped)) {
        leftOut_.labels.append(shown(row.label));
        leftOut_.counts.append(shown(row.count));
        leftOut_.reasons.append(shown(row.reason));
    }
    leftOut_.note = shown(vorn::leftOutNote(found->skipped));
    leftOut_.besides = shown(besideTexts(*found));
    messages_.show(found, context_, &model_->background());
    setOpen(true);
}

void Everything::close()
{
    if (!isOpen_) return;
    setOpen(false); // the page must go before its content
    messages_.show(nullptr, context_, &model_->background());
    setWords({});
}

void Everything::closeUnlessFound()
{
    if (!isFound()) close();
}

void Everything::setOpen(bool isOpen)
{
    isOpen_ = isOpen;
    emit isOpenChanged();
}

void Everything::setWords(const QString& words)
{
    if (std::exchange(words_, words) == words) return;
    emit wordsChanged();
    messages_.search(words.toStdString());
}

QString Everything::listed() const
{
    return shown(listedText(messages_.count(), messages_.total(), messages_.isSearch()));
}

QString Everything::nothingFound() const
{
    const bool isNothing = messages_.isSearch() && messages_.isComplete() && messages_.count() == 0;
    return isNothing ? shown(nothingFoundText(words_.trimmed().toStdString())) : QString();
}

ShownStatus Everything::copyStatus() const
{
    return model_ == nullptr ? ShownStatus() : ShownStatus(copyText(model_->copyPhase()));
}

bool Everything::isSaving() const
{
    return model_ != nullptr && std::holds_alternative<phase::Preparing>(model_->copyPhase());
}

void Everything::saveCopy(const QUrl& file)
{
    if (!isOpen_ || isSaving() || !file.isLocalFile()) return;
    model_->saveCopy(QFile::encodeName(file.toLocalFile()).toStdString());
}

QUrl Everything::suggestedFile()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return QUrl::fromLocalFile(folder.filePath(archiveName));
}

QString Everything::fileSuffix()
{
    return QFileInfo(archiveName).suffix();
}

} // namespace vorn
