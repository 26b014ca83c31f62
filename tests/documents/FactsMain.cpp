#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"
#include "VornMac/Composition/LiveServices.h"
#include "VornMac/Text/Consent.h"
#include "VornMacCore/Client/PartPlan.h"
#include "VornMacCore/Wire/Application.h"
#include "VornMacCore/Wire/JSONObject.h"
#include "tests/documents/ProblemTexts.h"
#include "tests/documents/WireFacts.h"

#include <cstdio>
#include <exception>

/// Prints what documents say of the programs, as the programs have it: one JSON object, for the tests beside this file.
int main()
try {
    const vorn::KeychainItem item = vorn::sessionItem();
    const nlohmann::ordered_json facts{
        {"texts", vorn::testing::problemTexts()},
        {"records", vorn::testing::wireRecords()},
        {"places",
         {{"identifier", vorn::bundleIdentifier()},
          {"keychain account", item.account},
          {"snapshot", vorn::temporarynames::snapshot.prefix},
          {"archive", vorn::temporarynames::archive.prefix},
          {"consent", vorn::consentKey("")}}},
        {"limits",
         {{"part size", vorn::PartPlan::defaultPartSize},
          {"part window", vorn::PartPlan::windowSize},
          {"answer bytes", vorn::JSONObject::maxTextSize},
          {"answer depth", vorn::JSONObject::maxDepth},
          {"answer values", vorn::JSONObject::maxValues}}},
    };
    std::printf("%s\n", facts.dump(2).c_str());
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "vorn-facts: %s\n", error.what());
    return 1;
}
