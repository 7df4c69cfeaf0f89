#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstring>
#include <string>
#include <string_view>

/// Writes what is beyond ASCII as escapes, as libjson does.
using RapidWriter = rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::ASCII<>,
                                      rapidjson::CrtAllocator>;

inline rapidjson::SizeType RapidLength(std::string_view text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

inline std::string RapidText(const rapidjson::Document& document) {
    rapidjson::StringBuffer buffer;
    RapidWriter writer(buffer);
    document.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}
