#include "Platform/Base/Bundle.h"

#include "Platform/Base/BundleInfo.h"

namespace vorn {

Bundle Bundle::main(Values embedded)
{
    Bundle bundle(std::move(embedded));
    bundle.asksSystem_ = true;
    return bundle;
}

std::optional<std::string> Bundle::text(const std::string& key) const
{
    if (asksSystem_) {
        if (auto found = mainBundleText(key)) return found;
    }
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

std::string Bundle::version() const
{
    return text("CFBundleShortVersionString").value_or("1.0.0");
}

} // namespace vorn
