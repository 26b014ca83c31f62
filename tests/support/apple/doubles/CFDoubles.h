#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <CoreFoundation/CoreFoundation.h>

namespace vorn::testing {

/// What the objects of Core Foundation are in this test program. Objects are counted: releasing one that is gone, or a
/// constant more often than it was retained, fails the running test. Threads: one.
struct CFDouble {
    enum class Type : CFTypeID { string = 1, data, dictionary, boolean, number, array, url };

    Type type;
    std::string bytes = {}; ///< of a string as UTF-8; of a number in digits; the name of a constant
    std::map<const CFDouble*, const CFDouble*> pairs = {};
    long retains = 1;
    bool isConstant = false;
    std::vector<CFTypeRef> items = {}; ///< of an array, which owns them

    /// An object that belongs to whoever asked for it.
    static CFTypeRef make(Type type, std::string bytes);
    /// An array of `items`, which become its own.
    static CFArrayRef makeArray(std::vector<CFTypeRef> items);

    /// A constant of the system's.
    static CFDouble constant(Type type, std::string name) { return {type, std::move(name), {}, 1, true, {}}; }

    static const CFDouble& of(CFTypeRef object) { return *static_cast<const CFDouble*>(object); }

    CFStringRef asString() const { return reinterpret_cast<CFStringRef>(this); }
};

/// How many objects are alive: as many at the end of a test as at its start, or something leaks.
std::size_t liveCFObjects();

/// `dictionary` for comparing: texts and data as they are, constants by their names.
std::map<std::string, std::string> readable(CFDictionaryRef dictionary);

} // namespace vorn::testing
