#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/CancelFlag.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <initializer_list>
#include <string>
#include <string_view>

struct sqlite3; // the C API stays out of our headers
struct sqlite3_stmt;

namespace vorn {

/// A connection made for filling one new file fast. Until `beginLog` nothing protects the file against a crash.
/// Threads: one at a time. Errors: `SampleHistoryError`, and `Cancelled` once the flag is raised.
class SampleDatabase {
public:
    /// Opens the existing, empty file.
    SampleDatabase(const std::filesystem::path& path, const CancelFlag* cancel);

    /// Runs one or more statements.
    void execute(const char* sql);

    /// Makes functions of these names that do nothing, so that triggers which call them can fire.
    void defineFunctions(std::initializer_list<const char*> names);

    /// From now on changes go to the write-ahead log, and stay there when the connection is closed.
    void beginLog();

    /// Asks the flag now; SQLite asks it on its own during long statements.
    void checkCancelled() const;

    sqlite3* handle() const noexcept { return handle_.get(); }

    [[noreturn]] void fail() const;

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept;
    };
    const CancelFlag* cancel_;
    std::unique_ptr<sqlite3, Close> handle_;
};

/// A prepared statement that is run again and again.
class SampleStatement {
public:
    SampleStatement(SampleDatabase& database, std::string_view sql);

    /// Runs the statement with one value for each parameter. Texts and blobs need to live until this returns.
    template <class... Values>
    void run(const Values&... values)
    {
        int index = 0;
        (bind(++index, values), ...);
        step();
    }

private:
    void bind(int index, std::int64_t value);
    void bind(int index, std::string_view text);
    void bind(int index, ByteView blob);
    void bind(int index, std::nullptr_t);
    void bind(int index, bool value) { bind(index, std::int64_t{value ? 1 : 0}); }
    void bind(int index, const std::string& text) { bind(index, std::string_view(text)); }
    void bind(int index, const char* text) { bind(index, std::string_view(text)); }
    void bind(int index, const ByteBuffer& blob) { bind(index, ByteView(blob)); }

    template <class T>
    void bind(int index, const std::optional<T>& value)
    {
        value ? bind(index, *value) : bind(index, nullptr);
    }

    void step();

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    SampleDatabase& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

} // namespace vorn
