#include "NimbrelExportKit/Messages/DeclaredTypes.h"
#include "NimbrelExportKit/Messages/PreferredMIMEType.h"

namespace vorn {

std::optional<std::string> preferredMIMEType(std::string_view typeIdentifier)
{
    return declaredMIMEType(typeIdentifier);
}

} // namespace vorn
