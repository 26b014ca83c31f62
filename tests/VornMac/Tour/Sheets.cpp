#include "tests/VornMac/Tour/Sheets.h"

#include "VornMac/Text/DoneText.h"
#include "tests/VornMac/Window/Scenes.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr int gap = 16;

QColor colour(WindowFixture& window, const char* name)
{
    return window.theme().property(name).value<QColor>();
}

/// Pictures in rows on one background.
class Sheet {
public:
    void add(const QImage& picture) { rows_.back().push_back(picture); }
    void beginRow() { rows_.emplace_back(); }

    QImage drawn(const QColor& ground) const
    {
        QSize size(0, gap);
        for (const auto& row : rows_) {
            const QSize its = sizeOf(row);
            size = QSize(std::max(size.width(), its.width() + gap), size.height() + its.height() + gap);
        }
        QImage sheet(size, QImage::Format_RGB32);
        sheet.fill(ground);
        QPainter painter(&sheet);
        int y = gap;
        for (const auto& row : rows_) {
            int x = gap;
            for (const QImage& picture : row) {
                painter.drawImage(x, y, picture);
                x += picture.width() + gap;
            }
            y += sizeOf(row).height() + gap;
        }
        return sheet;
    }

private:
    static QSize sizeOf(const std::vector<QImage>& row)
    {
        QSize size(0, 0);
        for (const QImage& picture : row)
            size = QSize(size.width() + picture.width() + gap, std::max(size.height(), picture.height()));
        return size;
    }

    std::vector<std::vector<QImage>> rows_;
};

/// A sheet in each theme.
class ThemedSheet {
public:
    void beginRow()
    {
        for (Sheet& sheet : sheets_) sheet.beginRow();
    }
    /// The part `frame` of what `stage` shows.
    void add(Stage& stage, const QRect& frame)
    {
        const Themed pictures = stage.picture();
        for (std::size_t index = 0; index < themes.size(); ++index) {
            sheets_.at(index).add(pictures.at(index).copy(frame));
            grounds_.at(index) = pictures.at(index).pixelColor(0, 0);
        }
    }
    Themed drawn() const
    {
        Themed pictures;
        for (std::size_t index = 0; index < themes.size(); ++index)
            pictures.at(index) = sheets_.at(index).drawn(grounds_.at(index));
        return pictures;
    }

private:
    std::array<Sheet, themes.size()> sheets_;
    std::array<QColor, themes.size()> grounds_;
};

// Controls.

struct Control {
    const char* scene;
    const char* name;
    bool isInMenu = false; ///< of the account
};

constexpr Control controls[] = {
    {"2-consent-ready", "Continue"},
    {"2-consent", "Continue"}, // disabled
    {"6-done-analyzing", "Back to your chat"},
    {"4-find-found-in-review", "Look again"},
    {"3-access-denied", "Back"},
    {"3-access-denied", "Show Vorn in Finder"},
    {"2-consent", "I agree to share my Nimbrel chat"},
    {"2-consent-ready", "I agree to share my Nimbrel chat"},
    {"2-consent", "Account"},
    {"2-consent", "Sign out of this Mac", true},
    {"4-find-everything-searched", "Clear search"},
};

void point(WindowFixture& window, QEvent::Type type, QPointF place)
{
    const bool isMove = type == QEvent::MouseMove;
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, place, window.window().mapToGlobal(place), isMove ? Qt::NoButton : Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&window.window(), &event);
    window.settle();
}

void addControl(ThemedSheet& sheet, const Control& control, QSize size)
{
    constexpr int widest = 320;
    constexpr int around = 10; // a focus ring, and some background
    constexpr QPointF away(2, 2);

    const auto open = [&](WindowFixture& window) {
        if (control.isInMenu) window.click("Account");
    };
    Stage stage({.play = [&](WindowFixture& window) { play(window, control.scene); }, .pose = open, .size = size});
    WindowFixture& window = stage.window();
    window.lay(); // lets a menu find its place
    QQuickItem* item = window.named(control.name);
    const QRectF whole = item->mapRectToScene(item->boundingRect());
    const QPointF middle = whole.center();
    QRect frame = whole.toAlignedRect().adjusted(-around, -around, around, around);
    frame.setWidth(std::min(frame.width(), widest));

    sheet.beginRow();
    sheet.add(stage, frame);
    point(window, QEvent::MouseMove, middle);
    sheet.add(stage, frame);
    point(window, QEvent::MouseButtonPress, middle);
    sheet.add(stage, frame);
    point(window, QEvent::MouseMove, away);
    point(window, QEvent::MouseButtonRelease, away); // without a click
    item->setFocus(false);                           // the press has set it with another reason
    item->forceActiveFocus(Qt::TabFocusReason);
    window.settle();
    sheet.add(stage, frame);
}

// Rejections.

constexpr const char* reasons[] = {"media_unreadable",    "wrong_provider",         "duplicate_media",
                                   "export_too_small",    "nothing_new_since_last", "authenticity_suspected",
                                   "a_reason_of_some_day"};

SubmissionStatus reviewed(const std::string& status)
{
    SubmissionStatus submission;
    submission.status = status;
    return submission;
}

std::string rejectionJSON(const std::string& reason)
{
    return R"({"id":"sub-1","questId":"quest-1","status":"rejected","rejectionReasonKey":")" + reason +
           R"(","rewardUsd":null,"assetsRemaining":0})";
}

// Notices.

std::vector<OutcomeNotice> notices()
{
    SubmissionStatus approved = reviewed("approved");
    approved.rewardUsd = "15.00";
    const QuestAvailability cooldown(QuestAvailability::Cooldown{Instant(std::chrono::seconds(1'773'532'800))});
    SubmissionStatus rejected = reviewed("rejected");
    rejected.rejectionReasonKey = "export_too_small";
    return {outcomeNotice({approved, std::nullopt, cooldown}), outcomeNotice({approved, std::nullopt, std::nullopt}),
            outcomeNotice({rejected, std::nullopt, std::nullopt}),
            outcomeNotice({reviewed("expired"), std::nullopt, std::nullopt})};
}

QImage drawnNotice(WindowFixture& window, const OutcomeNotice& notice, const QFont& font)
{
    constexpr int width = 344;
    constexpr int inset = 14;
    constexpr QRect room(inset, inset, width - 2 * inset, 1000);
    const QString title = QString::fromStdString(notice.title);
    const QString body = QString::fromStdString(notice.body);
    QFont bold = font;
    bold.setWeight(QFont::DemiBold);
    const int line = QFontMetrics(bold).height() + 2;
    const QRect text = QFontMetrics(font).boundingRect(room, Qt::TextWordWrap, body);

    QImage card(width, line + text.height() + 2 * inset, QImage::Format_ARGB32_Premultiplied);
    card.fill(Qt::transparent);
    QPainter painter(&card);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colour(window, "card"));
    painter.setPen(colour(window, "border"));
    painter.drawRoundedRect(QRectF(card.rect()).adjusted(0.5, 0.5, -0.5, -0.5), inset, inset);
    painter.setPen(colour(window, "ink"));
    painter.setFont(bold);
    painter.drawText(room, title);
    painter.setFont(font);
    painter.drawText(room.translated(0, line), Qt::TextWordWrap, body);
    return card;
}

} // namespace

Themed controlSheet(QSize window)
{
    ThemedSheet sheet;
    for (const Control& control : controls) addControl(sheet, control, window);
    return sheet.drawn();
}

Themed rejectionSheet(QSize window)
{
    ThemedSheet sheet;
    for (const char* reason : reasons) {
        Stage stage({.play =
                         [reason](WindowFixture& fix) {
                             fix.model.launchDone();
                             fix.model.advance(5s);
                             fix.model.answer(ModelFixture::review, rejectionJSON(reason));
                         },
                     .size = window});
        sheet.beginRow();
        sheet.add(stage, {32, 104, 520, 192});
    }
    return sheet.drawn();
}

Themed noticeSheet(QSize window)
{
    Stage stage({.play = [](WindowFixture& fix) { fix.model.launch(); }, .size = window});
    const QFont font = stage.window().theme().property("fonts").value<QObject*>()->property("label").value<QFont>();
    Themed pictures;
    for (std::size_t index = 0; index < themes.size(); ++index) {
        Appearance::shared().setTheme(themes.at(index).first);
        Sheet sheet;
        for (const OutcomeNotice& notice : notices()) {
            sheet.beginRow();
            sheet.add(drawnNotice(stage.window(), notice, font));
        }
        pictures.at(index) = sheet.drawn(colour(stage.window(), "panel"));
    }
    return pictures;
}

} // namespace vorn::testing
