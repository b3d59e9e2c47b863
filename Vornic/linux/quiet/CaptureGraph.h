#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vornic {

/// A node of the sound server, as far as it matters for who listens to a microphone.
struct GraphNode {
    /// "Audio/Source", "Stream/Input/Audio"; empty for some kinds of client.
    std::string mediaClass{};
    /// "jack" for clients of that interface, whose nodes have no class.
    std::string clientApi{};
    /// Names what a virtual device consists of: its stream and the device itself; mostly empty.
    std::string linkGroup{};
    /// Shows a level and keeps nothing.
    bool isMeter = false;
    /// Number of the client that owns it.
    std::uint32_t client = 0;
    /// Whether sound flows through it.
    bool isRunning = false;
};

/// Who is connected to whom at the sound server. Decides whether a program listens to a microphone.
/// Thread: any, one at a time.
class CaptureGraph {
  public:
    void setNode(std::uint32_t id, GraphNode node) { nodes_[id] = std::move(node); }

    /// Harmless for a node that is not known.
    void setRunning(std::uint32_t id, bool running);

    /// A connection that carries sound from node `output` to node `input`.
    void setLink(std::uint32_t id, std::uint32_t output, std::uint32_t input) {
        links_[id] = {output, input};
    }

    /// The process that a client is.
    void setProcess(std::uint32_t client, std::int64_t process) { processes_[client] = process; }

    /// Whether `client` is known to be `process`.
    bool isOf(std::uint32_t client, std::int64_t process) const {
        const auto found = processes_.find(client);
        return found != processes_.end() && found->second == process;
    }

    /// A node, a link or a client is gone; harmless for anything else.
    void remove(std::uint32_t id);

    /// Whether a running stream of a process other than `own` is connected to a microphone. The
    /// monitor of an output is none, and neither is a virtual source made from one; a virtual
    /// source made from a microphone is.
    bool inUse(std::int64_t own) const;

    /// Whether there is a microphone.
    bool hasMicrophone() const;

  private:
    struct Link {
        std::uint32_t output;
        std::uint32_t input;
    };

    bool isMicrophone(std::uint32_t id, int depth) const;
    bool listens(const GraphNode& node, std::int64_t own) const;

    std::map<std::uint32_t, GraphNode> nodes_;
    std::map<std::uint32_t, Link> links_;
    std::map<std::uint32_t, std::int64_t> processes_;
};

} // namespace vornic
