#pragma once

#include "NimbrelExportKit/Links/LinkDetector.h"

namespace vorn {

/// Our own detector of http and https links, the same on every platform. It reads a message once, and closely only
/// around dots, "://" and "localhost:"; its running time is linear in the size of the text, whatever the text. An
/// address with a scheme is returned as written ("HTTP://Example.com" too), percent-encoded where RFC 3986 requires it;
/// a host outside ASCII is returned in its ASCII form ("xn--…"). Threads: any.
class TextLinkDetector final : public LinkDetector {
public:
    explicit TextLinkDetector(const CancelFlag& cancel = CancelFlag::never()) noexcept : cancel_(cancel) {}

    void find(std::string_view text, std::vector<std::string>& urls) const override;

private:
    const CancelFlag& cancel_;
};

} // namespace vorn
