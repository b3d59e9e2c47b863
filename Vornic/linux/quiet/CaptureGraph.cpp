#include "Vornic/linux/quiet/CaptureGraph.h"

#include <algorithm>

namespace vornic {

namespace {

/// Virtual devices may be made from virtual devices, and by mistake in a circle.
constexpr int deepestVirtualDevice = 8;

bool isSource(const GraphNode& node) {
    return node.mediaClass.starts_with("Audio/Source") || node.mediaClass == "Audio/Duplex";
}

bool isCapture(const GraphNode& node) {
    return node.mediaClass == "Stream/Input/Audio" ||
           (node.mediaClass.empty() && node.clientApi == "jack");
}

} // namespace

void CaptureGraph::setRunning(std::uint32_t id, bool running) {
    if (const auto found = nodes_.find(id); found != nodes_.end()) {
        found->second.isRunning = running;
    }
}

void CaptureGraph::remove(std::uint32_t id) {
    nodes_.erase(id);
    links_.erase(id);
    processes_.erase(id);
}

bool CaptureGraph::inUse(std::int64_t own) const {
    return std::ranges::any_of(links_, [&](const auto& entry) {
        const auto input = nodes_.find(entry.second.input);
        return input != nodes_.end() && listens(input->second, own) &&
               isMicrophone(entry.second.output, deepestVirtualDevice);
    });
}

bool CaptureGraph::hasMicrophone() const {
    return std::ranges::any_of(nodes_, [this](const auto& entry) {
        return isMicrophone(entry.first, deepestVirtualDevice);
    });
}

bool CaptureGraph::listens(const GraphNode& node, std::int64_t own) const {
    const bool ours = isOf(node.client, own);
    // The stream inside a virtual device runs on behalf of whoever listens to the device.
    return isCapture(node) && node.isRunning && !node.isMeter && !ours && node.linkGroup.empty();
}

bool CaptureGraph::isMicrophone(std::uint32_t id, int depth) const {
    const auto found = nodes_.find(id);
    if (found == nodes_.end() || !isSource(found->second) || depth == 0) {
        return false;
    }
    const std::string& group = found->second.linkGroup;
    // What feeds a virtual device decides what it is.
    return group.empty() || std::ranges::any_of(links_, [&](const auto& entry) {
               const auto stream = nodes_.find(entry.second.input);
               return stream != nodes_.end() && stream->second.linkGroup == group &&
                      isMicrophone(entry.second.output, depth - 1);
           });
}

} // namespace vornic
