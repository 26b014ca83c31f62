#include "NimbrelExportKit/Links/TextLinkDetector.h"

namespace vorn {

std::unique_ptr<LinkDetector> LinkDetector::make()
{
    return std::make_unique<TextLinkDetector>();
}

} // namespace vorn
