/** Reads the keys of a JSON object; errors name the file and the key. */
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frame/base/Fail.h"

namespace kvx::frame {

using Json = nlohmann::ordered_json;

class JsonReader {
public:
    /** @param name for messages; @param object must outlive the reader */
    JsonReader(std::string name, const Json& object) : m_name(std::move(name)), m_object(object) {
        if (!object.is_object()) FailBroken("is not a JSON object");
    }

    [[noreturn]] void FailBroken(const std::string& reason) const {
        Fail(KvxResult_InvalidArgument, "{}: {}", m_name, reason);
    }
    [[noreturn]] void FailKey(const std::string& key, const char* expected) const {
        FailBroken(fmt::format("\"{}\" is not {}", key, expected));
    }

    /** The value of a key, or null. The key counts as known. */
    const Json* Find(const std::string& key) {
        m_known.push_back(key);
        const auto found = m_object.find(key);
        return found == m_object.end() ? nullptr : &*found;
    }
    std::optional<double> Number(const std::string& key) {
        const Json* const value = Find(key);
        if (value && !value->is_number()) FailKey(key, "a number");
        return value ? std::optional(value->get<double>()) : std::nullopt;
    }
    uint32_t Whole(const std::string& key) {
        const Json* const value = Find(key);
        if (!value) return 0;
        if (!value->is_number_unsigned() || value->get<uint64_t>() > INT32_MAX) FailKey(key, "a whole number");
        return value->get<uint32_t>();
    }
    std::string Text(const std::string& key) {
        const Json* const value = Find(key);
        if (value && !value->is_string()) FailKey(key, "a text");
        return value ? value->get<std::string>() : "";
    }
    /** `count` numbers; no numbers if there is no such key. */
    std::vector<double> Numbers(const std::string& key, size_t count) {
        const Json* const value = Find(key);
        if (!value) return {};
        const bool isRight = value->is_array() && value->size() == count &&
                             std::all_of(value->begin(), value->end(), [](const Json& v) { return v.is_number(); });
        if (!isRight) FailKey(key, fmt::format("a list of {} numbers", count).c_str());
        return value->get<std::vector<double>>();
    }

    /** The keys that nobody looked for. */
    std::vector<std::string> UnknownKeys() const {
        std::vector<std::string> unknown;
        for (const auto& [key, value] : m_object.items())
            if (std::find(m_known.begin(), m_known.end(), key) == m_known.end()) unknown.push_back(key);
        return unknown;
    }
    const std::vector<std::string>& KnownKeys() const {
        return m_known;
    }
    /** For objects in which every key counts. */
    void RequireAllKnown() const {
        for (const std::string& key : UnknownKeys()) FailBroken(fmt::format("\"{}\" is unknown", key));
    }

private:
    std::string m_name;
    const Json& m_object;
    std::vector<std::string> m_known;
};

}  // namespace kvx::frame
