#include "NimbrelExportKit/Types/DeclaredTypes.h"
#include "NimbrelExportKit/Types/PreferredMIMEType.h"

namespace vorn {

std::optional<std::string> preferredMIMEType(std::string_view typeIdentifier)
{
    return declaredMIMEType(typeIdentifier);
}

} // namespace vorn
