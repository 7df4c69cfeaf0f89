#include "ModelRecorder.h"

#include "host/system/Text.h"

namespace host {

ModelRecorder::ModelRecorder(SolverModelSink* sink) : sink_(sink) {}

std::uint64_t ModelRecorder::Numbers::CountElements() const {
    std::uint64_t count = elementsOfPart;
    for (const IdentifierSet& numbering : elements) {
        count += numbering.Count();
    }
    return count;
}

void ModelRecorder::AddNode(std::int64_t id, const Position& position) {
    current_->nodes.Add(id);
    if (sink_ != nullptr) {
        sink_->AddNode(id, position);
    }
}

void ModelRecorder::AddElement(const ModelElement& element, std::size_t numbering) {
    if (current_->elements.at(numbering).Add(element.id) && sink_ != nullptr) {
        sink_->AddElement(element);
    }
}

void ModelRecorder::AddMaterial(std::string_view name) {
    if (!name.empty() && materials_.insert(ToUpperAscii(name)).second) {
        model_.materials.emplace_back(name);
    }
}

void ModelRecorder::AddStep() {
    model_.steps = model_.steps.value_or(0) + 1;
}

void ModelRecorder::AddUnits(const std::string& units) {
    if (units.empty()) {
        return;
    }
    areUnitsUncertain_ = areUnitsUncertain_ || (!model_.units.empty() && model_.units != units);
    model_.units = areUnitsUncertain_ ? std::string() : units;
}

void ModelRecorder::BeginPart(std::string_view name) {
    EndPart();
    std::unique_ptr<Numbers>& part = parts_[ToUpperAscii(name)];
    if (part == nullptr) {
        part = std::make_unique<Numbers>();
    }
    current_ = part.get();
    if (sink_ != nullptr) {
        sink_->BeginPart(name);
    }
}

void ModelRecorder::EndPart() {
    EndInstance();
    if (current_ != &whole_ && sink_ != nullptr) {
        sink_->EndPart();
    }
    current_ = &whole_;
}

bool ModelRecorder::BeginInstance(std::string_view part, const Placement& placement) {
    EndPart();
    const auto found = parts_.find(ToUpperAscii(part));
    if (found == parts_.end()) {
        return false;
    }
    hasInstances_ = true;
    instance_ = std::make_unique<Numbers>();
    instance_->nodesOfPart = found->second->CountNodes();
    instance_->elementsOfPart = found->second->CountElements();
    current_ = instance_.get();
    if (sink_ != nullptr) {
        sink_->BeginInstance(part, placement);
    }
    return true;
}

void ModelRecorder::EndInstance() {
    if (instance_ == nullptr) {
        return;
    }
    nodesOfInstances_ += instance_->CountNodes();
    elementsOfInstances_ += instance_->CountElements();
    instance_.reset();
    current_ = &whole_;
    if (sink_ != nullptr) {
        sink_->EndInstance();
    }
}

void ModelRecorder::CannotCountNodes(const std::string& reason) {
    areNodesUncertain_ = true;
    model_.gap = model_.gap.empty() ? reason : model_.gap;
}

void ModelRecorder::CannotCountElements(const std::string& reason) {
    areElementsUncertain_ = true;
    model_.gap = model_.gap.empty() ? reason : model_.gap;
}

void ModelRecorder::CannotCount(const std::string& reason) {
    CannotCountNodes(reason);
    CannotCountElements(reason);
}

void ModelRecorder::CannotPlace(const std::string& reason) {
    model_.placeGap = model_.placeGap.empty() ? reason : model_.placeGap;
}

SolverModel ModelRecorder::Finish() {
    EndPart();
    std::uint64_t nodes = whole_.CountNodes() + nodesOfInstances_;
    std::uint64_t elements = whole_.CountElements() + elementsOfInstances_;
    // A file with parts alone is one that an assembly includes.
    if (!hasInstances_) {
        for (const auto& [name, part] : parts_) {
            nodes += part->CountNodes();
            elements += part->CountElements();
        }
    }
    // None at all says only that the model is elsewhere, as in a restart.
    if (!areNodesUncertain_ && nodes != 0) {
        model_.nodes = nodes;
    }
    if (!areElementsUncertain_ && elements != 0) {
        model_.elements = elements;
    }
    return std::move(model_);
}

}  // namespace host
