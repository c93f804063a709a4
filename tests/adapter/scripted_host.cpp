// The bookkeeping of the scripted host.
#include "scripted_host.h"

#include <stdexcept>

namespace fenmark::scripted {

namespace {

Host* running = nullptr;

} // namespace

Host::Host() {
    running = this;
}

Host::~Host() {
    for (const auto& [id, entity] : entities) {
        destroy(entity);
    }
    running = nullptr;
}

Host& current() {
    if (running == nullptr) {
        throw std::logic_error("no scripted host");
    }
    return *running;
}

bool Host::fails(std::string call) {
    ++steps;
    const bool failing = steps == failAt || (!failCall.empty() && call.starts_with(failCall));
    if (failing) {
        failedCall = call;
    }
    calls.push_back(std::move(call));
    return failing;
}

std::string Host::callText(std::size_t from) const {
    std::string text;
    for (std::size_t i = from; i < calls.size(); ++i) {
        if (!text.empty()) {
            text += ", ";
        }
        text += calls[i];
    }
    return text;
}

std::vector<std::string> Host::unbalanced() const {
    std::vector<std::string> found;
    for (const auto& object : objects_) {
        if (object->references != 0 || object->releasedTooOften) {
            found.push_back(object->label() + " has " + std::to_string(object->references));
        }
    }
    return found;
}

std::vector<Entity> Host::drawing() const {
    std::vector<Entity> found;
    for (const auto& [id, entity] : entities) {
        if (const auto* point = dynamic_cast<const mirdane::MdDbPoint*>(entity)) {
            found.push_back({"point", point->layer(), {point->position()}, false});
        } else if (const auto* simple = dynamic_cast<const mirdane::MdDb2dPolyline*>(entity)) {
            found.push_back({"2d polyline", simple->layer(), simple->vertices(), simple->closed()});
        } else if (const auto* polyline = dynamic_cast<const mirdane::MdDbPolyline*>(entity)) {
            found.push_back({"polyline", polyline->layer(), polyline->vertices(), polyline->closed()});
        }
    }
    return found;
}

std::size_t Host::strayBlocks() const {
    return heap.size() - entities.size();
}

void Host::openObject(const void* object, std::string label) {
    note("open " + label);
    open[object] = std::move(label);
}

void Host::closeObject(const void* object) {
    const auto found = open.find(object);
    if (found == open.end()) {
        faults.push_back("an object was closed that is not open");
        return;
    }
    note("close " + found->second.substr(0, found->second.find(" for ")));
    open.erase(found);
}

std::string Host::openLabel(const void* object) const {
    const auto found = open.find(object);
    return found == open.end() ? std::string() : found->second;
}

void Host::destroy(mirdane::MdDbEntity* entity) {
    entity->~MdDbEntity();
    mirdane::mdHeapFree(nullptr, entity);
}

} // namespace fenmark::scripted
