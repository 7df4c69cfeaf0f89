#include "PlotData.h"

#include <EmbeddedModel.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <unordered_map>

#include "host/document/FileFacts.h"
#include "host/query/Quantity.h"
#include "host/query/TextMatch.h"
#include "host/query/Units.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// A value of an object, its own or that of the nearest object above that has one.
template <typename Value>
class InheritedValues {
public:
    struct Found {
        std::optional<Value> value;
        bool isOwn = false;
    };

    /// The value for an object whose own one is given. Objects come in the order of the walk.
    Found Take(const WalkedObject& walked, std::optional<Value> own) {
        Found found{std::move(own), true};
        if (!found.value) {
            const auto above = values_.find(walked.above);
            found = {above != values_.end() ? std::optional(above->second) : std::nullopt, false};
        }
        if (found.value && !walked.isAttached) {
            values_.emplace(&walked.object, *found.value);
        }
        return found;
    }

private:
    std::unordered_map<const CAEObject*, Value> values_;
};

struct ReadPoint {
    Quantity x;
    Quantity y;
    std::string path;
    std::string group;
};

std::optional<Quantity> NumberOf(const Field& field, const WalkedObject& walked) {
    for (const FieldValue& value : field.IsMeasured() ? ValuesOf(field, walked) : std::vector<FieldValue>()) {
        if (std::optional<Quantity> number = ParseValue(value.text, value.unit)) {
            return number;
        }
    }
    return std::nullopt;
}

std::vector<std::string> UnitsOn(Quantity ReadPoint::*axis, const std::vector<ReadPoint>& points) {
    std::vector<std::string> given;
    std::ranges::transform(points, std::back_inserter(given),
                           [&](const ReadPoint& point) { return (point.*axis).unit; });
    return given;
}

class PlotReader {
public:
    explicit PlotReader(const PlotRequest& request) : request_(request) {}

    void Visit(const WalkedObject& walked);
    PlotData Take();

private:
    std::optional<double> Convert(const Quantity& quantity, const std::string& unit, const Field& field);
    std::string LabelOf(const ReadPoint& point) const;
    std::size_t GroupOf(const std::string& name);

    const PlotRequest& request_;
    PlotData data_;
    Units units_;
    std::vector<ReadPoint> points_;
    InheritedValues<Quantity> x_;
    InheritedValues<Quantity> y_;
    InheritedValues<std::string> by_;
    std::map<std::string, std::size_t> groups_;
};

void PlotReader::Visit(const WalkedObject& walked) {
    const auto x = x_.Take(walked, NumberOf(request_.x, walked));
    const auto y = y_.Take(walked, NumberOf(request_.y, walked));
    std::string group;
    if (request_.by) {
        const std::string own = ShownText(*request_.by, walked);
        group = by_.Take(walked, own.empty() ? std::nullopt : std::optional(own)).value.value_or("");
    }
    const bool isMeant = std::ranges::all_of(request_.conditions, [&](const Condition& condition) {
        return condition.IsMet(walked, units_, data_.notes);
    });
    if (!isMeant) {
        return;
    }
    data_.withX += x.value && x.isOwn ? 1 : 0;
    data_.withY += y.value && y.isOwn ? 1 : 0;
    if (x.value && y.value && (x.isOwn || y.isOwn)) {
        points_.push_back({*x.value, *y.value, walked.Path(), std::move(group)});
    }
}

std::optional<double> PlotReader::Convert(const Quantity& quantity, const std::string& unit,
                                          const Field& field) {
    const std::optional<double> value = units_.Convert(quantity.value, quantity.unit, unit);
    if (!value) {
        const std::string kind =
            "values of " + Quoted(field.name) + " left out, because " +
            (unit.empty() ? "most have no unit" : "their unit cannot be converted to " + Quoted(unit));
        if (quantity.unit.empty()) {
            data_.notes.AddQuoted(kind, "without a unit");
        } else {
            data_.notes.AddName(kind, quantity.unit);
        }
    } else if (!(std::abs(*value) <= kLargestPlotted)) {
        data_.notes.AddName("values of " + Quoted(field.name) + " left out, because they are too large",
                            FormatNumber(*value));
        return std::nullopt;
    }
    return value;
}

std::string PlotReader::LabelOf(const ReadPoint& point) const {
    const auto line = [](const std::string& name, const Quantity& quantity) {
        return "\n" + name + ": " + FormatNumber(quantity.value) + (quantity.unit.empty() ? "" : " ") +
               quantity.unit;
    };
    return point.path + line(request_.x.name, point.x) + line(request_.y.name, point.y) +
           (request_.by && !point.group.empty() ? "\n" + request_.by->name + ": " + point.group : "");
}

std::size_t PlotReader::GroupOf(const std::string& name) {
    const auto [found, isNew] = groups_.emplace(name, groups_.size());
    if (isNew) {
        data_.plot.groups.push_back(name.empty() ? "without " + request_.by->name : name);
    }
    return found->second;
}

PlotData PlotReader::Take() {
    Plot& plot = data_.plot;
    plot.title = request_.title;
    plot.x = {request_.x.name, CommonUnit(UnitsOn(&ReadPoint::x, points_), units_)};
    plot.y = {request_.y.name, CommonUnit(UnitsOn(&ReadPoint::y, points_), units_)};
    plot.groupedBy = request_.by ? request_.by->name : "";
    for (const ReadPoint& point : points_) {
        const std::optional<double> x = Convert(point.x, plot.x.unit, request_.x);
        const std::optional<double> y = Convert(point.y, plot.y.unit, request_.y);
        if (x && y) {
            plot.points.push_back({*x, *y, LabelOf(point), request_.by ? GroupOf(point.group) : 0});
        }
    }
    return std::move(data_);
}

}  // namespace

PlotData ReadPlotData(CAEObject& root, const PlotRequest& request) {
    PlotReader reader(request);
    WalkObjects(root, [&](const WalkedObject& walked) { reader.Visit(walked); });
    return reader.Take();
}

std::vector<std::string> NamesOfNumbers(CAEObject& root) {
    std::vector<std::string> names;
    std::set<std::string> known;
    WalkObjects(root, [&](const WalkedObject& walked) {
        for (const korvane::MetadataValues& entry : korvane::GetMetadata(walked.object)) {
            const std::string value = korvane::exchange::ToUtf8(entry.value);
            std::string name = korvane::exchange::ToUtf8(entry.name);
            if (ParseValue(value, korvane::exchange::ToUtf8(UnitOf(entry))) &&
                known.insert(FoldCase(name)).second) {
                names.push_back(std::move(name));
            }
        }
    });
    return names;
}

}  // namespace host
