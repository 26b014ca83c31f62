#include "tests/VornMac/View/ScreenFixture.h"

#include <utility>

#include <QMetaProperty>
#include <fmt/format.h>

namespace vorn::testing {
namespace {

std::string textOf(const QMetaProperty& property, const QVariant& value);

/// The members of a structured value, each with its name.
std::string membersOf(const QMetaObject& type, const void* value)
{
    std::string text;
    for (int index = 0; index < type.propertyCount(); ++index) {
        const QMetaProperty property = type.property(index);
        const std::string member = textOf(property, property.readOnGadget(value));
        if (!member.empty()) text += fmt::format("{}{}={}", text.empty() ? "" : "; ", property.name(), member);
    }
    return text;
}

std::string textOf(const QMetaProperty& property, const QVariant& value)
{
    if (property.isEnumType()) return property.enumerator().valueToKey(value.toInt());
    if (property.metaType().flags() & QMetaType::IsGadget)
        return membersOf(*property.metaType().metaObject(), value.constData());
    if (value.canConvert<QStringList>()) return value.toStringList().join(" | ").toStdString();
    return value.toString().toStdString();
}

} // namespace

ScreenFixture::~ScreenFixture()
{
    fix.quit(); // ends the context's tasks before the screen is destroyed
}

ScreenModel& ScreenFixture::show()
{
    screen_ = std::make_unique<ScreenModel>(fix.model(), fix.context, fix.clock);
    const auto count = [this](auto signal, const char* name) {
        QObject::connect(screen_.get(), signal, screen_.get(), [this, name] { ++told_[name]; });
    };
    count(&ScreenModel::restorePhaseChanged, "restorePhaseChanged");
    count(&ScreenModel::stepChanged, "stepChanged");
    count(&ScreenModel::sessionChanged, "sessionChanged");
    count(&ScreenModel::linkPhaseChanged, "linkPhaseChanged");
    count(&ScreenModel::qrPayloadChanged, "qrPayloadChanged");
    count(&ScreenModel::linkExpiresChanged, "linkExpiresChanged");
    count(&ScreenModel::linkSecondsLeftChanged, "linkSecondsLeftChanged");
    count(&ScreenModel::understandsUploadChanged, "understandsUploadChanged");
    count(&ScreenModel::agreesToShareChanged, "agreesToShareChanged");
    count(&ScreenModel::consentChanged, "consentChanged");
    count(&ScreenModel::textChanged, "textChanged");
    count(&ScreenModel::rewardChanged, "rewardChanged");
    count(&ScreenModel::outcomeChanged, "outcomeChanged");
    count(&ScreenModel::accessChanged, "accessChanged");
    count(&ScreenModel::scanPhaseChanged, "scanPhaseChanged");
    count(&ScreenModel::exportResultChanged, "exportResultChanged");
    count(&ScreenModel::canUploadChanged, "canUploadChanged");
    count(&ScreenModel::uploadBarChanged, "uploadBarChanged");
    return *screen_;
}

std::string ScreenFixture::value(const char* property) const
{
    const QMetaObject& type = ScreenModel::staticMetaObject;
    return textOf(type.property(type.indexOfProperty(property)), screen_->property(property));
}

std::map<std::string, std::string> ScreenFixture::values() const
{
    return valuesOf(*screen_);
}

std::map<std::string, std::string> valuesOf(const ScreenModel& screen)
{
    std::map<std::string, std::string> values;
    const QMetaObject& type = ScreenModel::staticMetaObject;
    for (int index = type.propertyOffset(); index < type.propertyCount(); ++index) {
        const QMetaProperty property = type.property(index);
        if (property.hasNotifySignal()) values[property.name()] = textOf(property, property.read(&screen));
    }
    return values;
}

ScreenFixture::Counts ScreenFixture::told()
{
    return std::exchange(told_, {});
}

std::vector<std::string> propertiesOf(const std::string& signal)
{
    std::vector<std::string> names;
    const QMetaObject& type = ScreenModel::staticMetaObject;
    for (int index = type.propertyOffset(); index < type.propertyCount(); ++index) {
        const QMetaProperty property = type.property(index);
        if (property.notifySignal().name() == signal.c_str()) names.emplace_back(property.name());
    }
    return names;
}

std::string paidQuestJSON(const std::string& until)
{
    return fmt::format(
        R"({{"quest":{{"id":"quest-1","rewardUsd":12.5,"status":"approved","availableAt":"{}"}},"handles":["+15550102030"],"maxBytes":5000000000}})",
        until);
}

} // namespace vorn::testing
