#include "NodeRows.h"

#include "ServerTables.h"

namespace host {
namespace {

constexpr std::int64_t kAfterAll = std::numeric_limits<std::int64_t>::max();

}  // namespace

NodeRows::NodeRows(Database& database)
    : rows_(database,
            "SELECT node.number, node.members, coalesce(assembly.key, object.key) FROM node"
            " LEFT JOIN object ON object.number = node.object"
            " LEFT JOIN object AS assembly ON assembly.number = node.shown"
            " WHERE node.number >= ? ORDER BY node.number") {}

void NodeRows::GoTo(std::int64_t number) {
    const bool isThere = last_ < number && rows_.Next() && rows_.Number(0) == number;
    if (!isThere && (!rows_.Begin(number).Next() || rows_.Number(0) != number)) {
        RefuseDamaged("the node " + std::to_string(number) + " is missing");
    }
    last_ = number;
    if (rows_.IsNull(2)) {
        RefuseDamaged("a node has no object");
    }
}

NodesBelow::NodesBelow(Database& database)
    : rows_(database,
            "SELECT above, section, number FROM node WHERE above >= ? ORDER BY above, section, position") {}

void NodesBelow::AddTo(std::vector<NodeBelow>& nodes, std::int64_t number) {
    if (number <= passed_ || above_ < number) {
        Begin(number);
    }
    for (; above_ == number; Next()) {
        nodes.push_back({rows_.Number(2), PlaceOfSection(rows_.Number(1))});
    }
    passed_ = number;
}

void NodesBelow::Begin(std::int64_t number) {
    rows_.Begin(number);
    Next();
}

void NodesBelow::Next() {
    above_ = rows_.Next() ? rows_.Number(0) : kAfterAll;
}

}  // namespace host
