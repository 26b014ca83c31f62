#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <CoreFoundation/CoreFoundation.h>

namespace vorn::testing {

/// The objects of Core Foundation in this test program. Objects are counted: releasing a destroyed one, or a constant
/// more often than it was retained, fails the running test. Threads: one.
struct CFDouble {
    enum class Type : CFTypeID { string = 1, data, dictionary, boolean, number, array, url };

    Type type;
    std::string bytes = {}; ///< of a string as UTF-8; of a number in digits; the name of a constant
    std::map<const CFDouble*, const CFDouble*> pairs = {};
    long retains = 1;
    bool isConstant = false;
    std::vector<CFTypeRef> items = {}; ///< of an array, which owns them

    /// An object that the caller owns.
    static CFTypeRef make(Type type, std::string bytes);
    /// An array that takes over `items`.
    static CFArrayRef makeArray(std::vector<CFTypeRef> items);

    /// A constant of the system's.
    static CFDouble constant(Type type, std::string name) { return {type, std::move(name), {}, 1, true, {}}; }

    static const CFDouble& of(CFTypeRef object) { return *static_cast<const CFDouble*>(object); }

    CFStringRef asString() const { return reinterpret_cast<CFStringRef>(this); }
};

/// How many objects are alive: the same number at the start and the end of a test, or there is a leak.
std::size_t liveCFObjects();

/// `dictionary` for comparing: texts and data as they are, constants by their names.
std::map<std::string, std::string> readable(CFDictionaryRef dictionary);

} // namespace vorn::testing
