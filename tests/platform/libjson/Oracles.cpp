#include "Oracles.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "Texts.h"

namespace {

using Ordered = nlohmann::ordered_json;

/// Iterative: RapidJSON's stack would not hold what a fuzzer nests.
constexpr unsigned kRapidFlags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag |
                                 rapidjson::kParseIterativeFlag;

bool SameNumber(const JSONNode& node, const Ordered& oracle) {
    if (node.type() != JSON_NUMBER || node.as_float() != oracle.get<double>()) {
        return false;
    }
    constexpr json_int_t kGreatest = std::numeric_limits<json_int_t>::max();
    if (oracle.is_number_unsigned()) {
        const auto integer = oracle.get<std::uint64_t>();
        const bool fits = integer <= static_cast<std::uint64_t>(kGreatest);
        return node.as_int() == (fits ? static_cast<json_int_t>(integer) : kGreatest);
    }
    return !oracle.is_number_integer() || node.as_int() == oracle.get<std::int64_t>();
}

bool Same(const JSONNode& node, const Ordered& oracle) {
    switch (oracle.type()) {
        case Ordered::value_t::null:
            return node.type() == JSON_NULL;
        case Ordered::value_t::boolean:
            return node.type() == JSON_BOOL && node.as_bool() == oracle.get<bool>();
        case Ordered::value_t::string:
            return node.type() == JSON_STRING && ValueOf(node) == oracle.get_ref<const std::string&>();
        case Ordered::value_t::array:
        case Ordered::value_t::object: {
            const bool named = oracle.is_object();
            const auto type = static_cast<unsigned char>(named ? JSON_NODE : JSON_ARRAY);
            if (node.type() != type || node.size() != oracle.size()) {
                return false;
            }
            json_index_t index = 0;
            for (auto member = oracle.begin(); member != oracle.end(); ++member, ++index) {
                if (NameOf(node[index]) != (named ? member.key() : "") || !Same(node[index], *member)) {
                    return false;
                }
            }
            return true;
        }
        default:
            return SameNumber(node, oracle);
    }
}

bool Same(const JSONNode& node, const rapidjson::Value& oracle) {
    switch (oracle.GetType()) {
        case rapidjson::kNullType:
            return node.type() == JSON_NULL;
        case rapidjson::kTrueType:
        case rapidjson::kFalseType:
            return node.type() == JSON_BOOL && node.as_bool() == oracle.GetBool();
        case rapidjson::kStringType:
            return node.type() == JSON_STRING &&
                   ValueOf(node) == std::string_view(oracle.GetString(), oracle.GetStringLength());
        case rapidjson::kNumberType:
            // RapidJSON 1.1 reads 0e-60 as something other than zero; the other oracle has looked at zeros.
            return node.type() == JSON_NUMBER && (!node.as_bool() || node.as_float() == oracle.GetDouble());
        case rapidjson::kArrayType:
            if (node.type() != JSON_ARRAY || node.size() != oracle.Size()) {
                return false;
            }
            for (json_index_t index = 0; index < node.size(); ++index) {
                if (!Same(node[index], oracle[index])) {
                    return false;
                }
            }
            return true;
        case rapidjson::kObjectType: {
            if (node.type() != JSON_NODE || node.size() != oracle.MemberCount()) {
                return false;
            }
            json_index_t index = 0;
            for (const auto& member : oracle.GetObject()) {
                const std::string_view name(member.name.GetString(), member.name.GetStringLength());
                if (NameOf(node[index]) != name || !Same(node[index], member.value)) {
                    return false;
                }
                ++index;
            }
            return true;
        }
    }
    return false;
}

/// Whether a name comes twice in one object.
bool HasDuplicates(const JSONNode& node) {
    for (const JSONNode& child : node) {
        if ((node.type() == JSON_NODE && node.find(child.name()) != &child) || HasDuplicates(child)) {
            return true;
        }
    }
    return false;
}

/// Whether RapidJSON refuses only what libjson takes with good reason.
bool IsWithinTheGrammar(rapidjson::ParseErrorCode error) {
    return error == rapidjson::kParseErrorNumberTooBig ||
           error == rapidjson::kParseErrorStringInvalidEncoding ||
           error == rapidjson::kParseErrorStringUnicodeSurrogateInvalid;
}

}  // namespace

OracleVerdict AskOracles(std::string_view text) {
    rapidjson::Document rapid;
    rapid.Parse<kRapidFlags>(text.data(), text.size());
    const Ordered nlohmann = Ordered::parse(text, nullptr, false);
    OracleVerdict verdict;
    verdict.bothAccept = !rapid.HasParseError() && !nlohmann.is_discarded();
    verdict.bothRefuse = rapid.HasParseError() && nlohmann.is_discarded();

    JSONNode node;
    bool accepted = true;
    std::string refusedFor;
    try {
        node = Parse(text);
    } catch (const std::invalid_argument& refusal) {
        accepted = false;
        refusedFor = refusal.what();
    }
    if (accepted != libjson::is_valid(Text(text))) {
        verdict.difference = "parse and is_valid disagree";
    } else if (text.starts_with("\xEF\xBB\xBF") || text.find('\0') != std::string_view::npos) {
        // The oracles skip the one and take the other for the end of the text.
        verdict = {false, false, accepted ? "accepted a byte order mark or a NUL" : ""};
    } else if (accepted && verdict.bothRefuse && !IsWithinTheGrammar(rapid.GetParseError())) {
        verdict.difference = std::string("accepted: ") + rapidjson::GetParseError_En(rapid.GetParseError());
    } else if (!accepted && verdict.bothAccept) {
        verdict.difference = "refused: " + refusedFor;
    } else if (accepted && verdict.bothAccept && !HasDuplicates(node)) {
        if (!Same(node, nlohmann)) {
            verdict.difference = "not what nlohmann-json reads";
        } else if (!Same(node, rapid)) {
            verdict.difference = "not what RapidJSON reads";
        }
    }
    return verdict;
}
