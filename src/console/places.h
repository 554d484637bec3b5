#pragma once
// The places an item can lie in, read and written whole, and a move between
// them that checks its result and puts every place back when a step failed.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/ports.h"

namespace tessmark::console {

// A registry value (root, key, name) or, with `file` set, a file.
struct Slot {
    platform::RegHandle root = 0;
    std::string key, name;
    std::string file;
    std::string Text() const;
};

// What a place holds: a value's type and bytes, a file's bytes. A wanted
// shortcut made by the shell (its bytes are the shell's to choose) names only
// its target.
struct Content {
    std::uint32_t type = 0;
    std::string bytes;
    bool madeShortcutTo = false;
    bool operator==(const Content&) const = default;
};
using State = std::optional<Content>;  // nothing: the place is empty

struct Outcome {
    int code = 0;
    std::string message;
};

// Fills `want` (a copy of `before`) with what each place should hold after
// the move; a non-empty answer refuses the move before anything is written.
using Planner = std::function<std::string(const std::vector<State>& before, std::vector<State>& want)>;

class Places {
public:
    explicit Places(platform::Ports ports) : ports_(ports) {}

    // Nothing on failure, with the reason in `error`.
    std::optional<State> Read(const Slot& slot, std::string& error);
    bool Write(const Slot& slot, const State& state, std::string& error);
    // Reads every place, writes what the plan changes (fillings before
    // emptyings, so the item is never nowhere), reads every place again and
    // compares. Any failure puts every place back as it was: code 4.
    Outcome Move(const std::vector<Slot>& slots, const Planner& plan);

private:
    bool Holds(const Slot& slot, const State& now, const State& want);
    platform::Ports ports_;
};

}  // namespace tessmark::console
