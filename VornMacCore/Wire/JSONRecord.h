#pragma once

#include "VornMacCore/Wire/JSONObject.h"
#include "VornMacCore/Wire/JSONObjectWriter.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace vorn {

/// One field of a record: its key and where it is kept.
template <class Record, class Value>
struct JSONField {
    std::string_view key;
    Value Record::* member;
};

// Spelled out because older Apple compilers deduce nothing for aggregates.
template <class Record, class Value>
JSONField(std::string_view, Value Record::*) -> JSONField<Record, Value>;

/// How a record is represented in JSON: specialise this with a tuple of its fields, used for reading and for writing.
///
///     template <>
///     inline constexpr auto jsonFields<LinkedUser> = std::tuple{
///         JSONField{"id", &LinkedUser::id},
///         JSONField{"displayName", &LinkedUser::displayName},
///     };
///
/// Fields are strings, 64-bit integers, doubles, records, arrays of strings or of records, and optionals of these.
/// A missing or null optional reads as absent; an absent one is not written.
template <class Record>
inline constexpr auto jsonFields = nullptr;

/// How text becomes a value of another type: specialise this with a function that accepts any text. For reading only.
template <class Value>
inline constexpr auto jsonTextReader = nullptr;

namespace jsonrecord {

template <class Value>
concept ReadFromText = !std::same_as<decltype(jsonTextReader<Value>), const std::nullptr_t>;

template <class Record>
Record read(const JSONObject& object);

inline void readValue(const JSONObject& from, std::string_view key, std::string& into)
{
    into = from.string(key);
}

inline void readValue(const JSONObject& from, std::string_view key, std::int64_t& into)
{
    into = from.integer(key);
}

inline void readValue(const JSONObject& from, std::string_view key, double& into)
{
    into = from.number(key);
}

inline void readValue(const JSONObject& from, std::string_view key, std::vector<std::string>& into)
{
    into = from.strings(key);
}

template <class Record>
void readValue(const JSONObject& from, std::string_view key, std::vector<Record>& into)
{
    from.forEachObject(key, [&into](const JSONObject& object) { into.push_back(read<Record>(object)); });
}

template <class Record>
void readValue(const JSONObject& from, std::string_view key, Record& into)
{
    if constexpr (ReadFromText<Record>) {
        into = jsonTextReader<Record>(from.string(key));
    } else {
        into = read<Record>(from.object(key));
    }
}

template <class Value>
void readField(const JSONObject& from, std::string_view key, Value& into)
{
    readValue(from, key, into);
}

template <class Value>
void readField(const JSONObject& from, std::string_view key, std::optional<Value>& into)
{
    if (from.has(key)) readValue(from, key, into.emplace());
}

template <class Record>
Record read(const JSONObject& object)
{
    Record record;
    std::apply([&](const auto&... field) { (readField(object, field.key, record.*field.member), ...); },
               jsonFields<Record>);
    return record;
}

template <class Record>
JSONObjectWriter written(const Record& record);

inline void writeValue(JSONObjectWriter& into, std::string_view key, const std::string& value)
{
    into.string(key, value);
}

inline void writeValue(JSONObjectWriter& into, std::string_view key, std::int64_t value)
{
    into.integer(key, value);
}

inline void writeValue(JSONObjectWriter& into, std::string_view key, double value)
{
    into.number(key, value);
}

inline void writeValue(JSONObjectWriter& into, std::string_view key, const std::vector<std::string>& values)
{
    into.strings(key, values);
}

template <class Record>
void writeValue(JSONObjectWriter& into, std::string_view key, const std::vector<Record>& records)
{
    std::vector<JSONObjectWriter> objects;
    objects.reserve(records.size());
    for (const Record& record : records) objects.push_back(written(record));
    into.objects(key, std::move(objects));
}

template <class Record>
void writeValue(JSONObjectWriter& into, std::string_view key, const Record& record)
{
    into.object(key, written(record));
}

template <class Value>
void writeField(JSONObjectWriter& into, std::string_view key, const Value& value)
{
    writeValue(into, key, value);
}

template <class Value>
void writeField(JSONObjectWriter& into, std::string_view key, const std::optional<Value>& value)
{
    if (value) writeValue(into, key, *value);
}

template <class Record>
JSONObjectWriter written(const Record& record)
{
    JSONObjectWriter object;
    std::apply([&](const auto&... field) { (writeField(object, field.key, record.*field.member), ...); },
               jsonFields<Record>);
    return object;
}

} // namespace jsonrecord

/// The record that `text` holds. Throws `UndecodableJSON`.
template <class Record>
Record decodeJSON(std::string_view text)
{
    return jsonrecord::read<Record>(JSONObject::parse(text));
}

/// `record` as compact JSON, its keys in the order of its fields. Throws `UnencodableJSON`.
template <class Record>
std::string encodeJSON(const Record& record)
{
    return jsonrecord::written(record).text();
}

} // namespace vorn
