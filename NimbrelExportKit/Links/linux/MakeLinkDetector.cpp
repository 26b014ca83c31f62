#include "NimbrelExportKit/Links/TextLinkDetector.h"

namespace vorn {

std::unique_ptr<LinkDetector> LinkDetector::make(const CancelFlag& cancel)
{
    return std::make_unique<TextLinkDetector>(cancel);
}

} // namespace vorn
