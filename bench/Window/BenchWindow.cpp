#include "bench/Window/BenchWindow.h"

#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "bench/Window/TimedApplication.h"

#include <string>
#include <variant>

namespace vorn::bench {

class BenchWindow::Defaults final : public UserDefaults {
public:
    explicit Defaults(bool hasConsented) : hasConsented_(hasConsented) {}

    std::optional<std::string> text(const std::string& key) const override
    {
        // Without it, the small screen of the offscreen platform would give the window its minimum size.
        return key == GeometryKeeper::defaultsKey ? std::optional<std::string>("0 0 1180 760") : std::nullopt;
    }
    bool boolean(const std::string& /*key*/) const override { return hasConsented_; }
    void setBoolean(const std::string& /*key*/, bool /*value*/) override {}
    void setText(const std::string& /*key*/, const std::string& /*value*/) override {}

private:
    bool hasConsented_;
};

class BenchWindow::NoWorkspace final : public Workspace {
public:
    bool open(const std::string& /*url*/) override { return false; }
    void revealApplication() override {}
    void relaunch() override {}
};

BenchWindow::BenchWindow(const Options& options)
    : defaults_(std::make_unique<Defaults>(options.hasConsented)), workspace_(std::make_unique<NoWorkspace>())
{
    const auto tokens = options.isSignedIn
                            ? std::make_shared<InMemoryTokenStore>(StoredSession("token", "refresh", "user-ada", "Ada"))
                            : std::make_shared<InMemoryTokenStore>();
    const auto service = std::make_shared<NearService>(clock_, options.service);
    model_.emplace(AppServices{.context = &loop_.context(),
                               .clock = &clock_,
                               .background = &pool_,
                               .api = VornAPI({APIConfiguration::productionBaseURL()}, service, tokens),
                               .tokens = tokens,
                               .transfer = service,
                               .defaults = defaults_.get(),
                               .workspace = workspace_.get(),
                               .files = &FileManager::standard(),
                               .messagesDatabase = options.history,
                               .bundle = Bundle({})});
    if (options.onModel) options.onModel(*model_);
    screenModel_.emplace(*model_, loop_.context(), clock_);
    const QVariantMap properties{{"model", QVariant::fromValue(&*screenModel_)}};
    window_.emplace(MainWindow::standardSource(), properties, *defaults_, [] {});
    bool isShown = false;
    window_->show([&isShown] { isShown = true; });
    TimedApplication::runUntil([&isShown] { return isShown; });
}

BenchWindow::~BenchWindow()
{
    loop_.context().shutDown();
}

void BenchWindow::runUntil(Step step) const
{
    TimedApplication::runUntil([this, step] { return model_->step() == step; });
}

void BenchWindow::runUntilFound() const
{
    TimedApplication::runUntil([this] { return std::holds_alternative<phase::Found>(model_->scanPhase()); });
}

} // namespace vorn::bench
