#include "console/places.h"

#include "storage/modStartup.h"

namespace tessmark::console {

namespace reg = platform::reg;

std::string Slot::Text() const {
    if (!file.empty()) return file;
    return (root == reg::kCurrentUser ? "HKCU\\" : "HKLM\\") + key + " [" + name + "]";
}

namespace {

std::string Code(std::int32_t rc) {
    const char* meaning = rc == reg::kAccessDenied ? " (access denied)" : rc == reg::kFileNotFound ? " (not found)" : "";
    return "error " + std::to_string(rc) + meaning;
}

// A registry handle closed on every path.
struct Key {
    platform::RegistryPort& registry;
    platform::RegHandle handle = 0;
    ~Key() {
        if (handle) registry.RegCloseKey(handle);
    }
};

}  // namespace

std::optional<State> Places::Read(const Slot& slot, std::string& error) {
    if (!slot.file.empty()) {
        const std::uint32_t attributes = ports_.files.GetFileAttributesA(slot.file.c_str());
        if (attributes == platform::kInvalidFileAttributes) return State{};
        Content content;
        if ((attributes & platform::kAttrDirectory) || !ports_.files.ReadWholeFile(slot.file, &content.bytes)) {
            error = "cannot read " + slot.file;
            return std::nullopt;
        }
        return State{content};
    }
    auto& registry = ports_.registry;
    Key key{registry};
    std::int32_t rc = registry.RegOpenKeyExA(slot.root, slot.key.c_str(), 0, reg::kRead, &key.handle);
    if (rc == reg::kFileNotFound) return State{};
    Content content;
    std::uint32_t size = 0;
    if (rc == 0) rc = registry.RegQueryValueExA(key.handle, slot.name.c_str(), &content.type, nullptr, &size);
    if (rc == reg::kFileNotFound) return State{};
    if (rc == 0) {
        content.bytes.assign(size, '\0');
        rc = registry.RegQueryValueExA(key.handle, slot.name.c_str(), &content.type,
                                       reinterpret_cast<std::uint8_t*>(content.bytes.data()), &size);
        content.bytes.resize(size);
    }
    if (rc != 0) {
        error = "cannot read " + slot.Text() + ": " + Code(rc);
        return std::nullopt;
    }
    return State{content};
}

bool Places::Write(const Slot& slot, const State& state, std::string& error) {
    if (!slot.file.empty()) {
        auto& files = ports_.files;
        bool done;
        if (!state) {
            done = files.GetFileAttributesA(slot.file.c_str()) == platform::kInvalidFileAttributes || files.Kill(slot.file);
        } else {
            std::string path = slot.file;
            done = !storage::MakeFolderPath(files, path).empty() &&
                   (state->madeShortcutTo ? ports_.shell.SaveShortcut(slot.file, state->bytes, state->bytes + ",0", 1)
                                          : files.WriteWholeFile(slot.file, state->bytes));
        }
        if (!done) error = "cannot " + std::string(state ? "write " : "delete ") + slot.file + " (denied or in use)";
        return done;
    }
    auto& registry = ports_.registry;
    Key key{registry};
    std::int32_t rc;
    if (state) {
        rc = registry.RegCreateKeyA(slot.root, slot.key.c_str(), &key.handle);
        if (rc == 0)
            rc = registry.RegSetValueExA(key.handle, slot.name.c_str(), state->type,
                                         reinterpret_cast<const std::uint8_t*>(state->bytes.data()),
                                         static_cast<std::uint32_t>(state->bytes.size()));
    } else {
        rc = registry.RegOpenKeyExA(slot.root, slot.key.c_str(), 0, reg::kAllAccess, &key.handle);
        if (rc == 0) rc = registry.RegDeleteValueA(key.handle, slot.name.c_str());
        if (rc == reg::kFileNotFound) rc = 0;
    }
    if (rc != 0) error = "cannot " + std::string(state ? "write " : "delete ") + slot.Text() + ": " + Code(rc);
    return rc == 0;
}

bool Places::Holds(const Slot& slot, const State& now, const State& want) {
    if (!want || !want->madeShortcutTo) return now == want;
    std::string target;
    return now && ports_.shell.ShortcutTarget(slot.file, &target) && target == want->bytes;
}

Outcome Places::Move(const std::vector<Slot>& slots, const Planner& plan) {
    std::string error;
    std::vector<State> before;
    for (const Slot& slot : slots) {
        auto state = Read(slot, error);
        if (!state) return {4, error + "; nothing was changed"};
        before.push_back(*state);
    }
    std::vector<State> want = before;
    if (std::string refusal = plan(before, want); !refusal.empty()) return {4, refusal + "; nothing was changed"};

    // Fillings first, then emptyings: a failure between them leaves the item twice, never nowhere.
    auto writeAll = [&](const std::vector<State>& states, const std::vector<State>& from, std::string& failure) {
        bool ok = true;
        for (bool filling : {true, false})
            for (std::size_t i = 0; i < slots.size(); ++i)
                if (states[i].has_value() == filling && !(from[i] == states[i]) && !Write(slots[i], states[i], failure))
                    ok = false;
        return ok;
    };
    bool ok = true;
    for (bool filling : {true, false})
        for (std::size_t i = 0; ok && i < slots.size(); ++i)
            if (want[i].has_value() == filling && !(want[i] == before[i])) ok = Write(slots[i], want[i], error);
    for (std::size_t i = 0; ok && i < slots.size(); ++i) {
        auto state = Read(slots[i], error);
        ok = state && Holds(slots[i], *state, want[i]);
        if (state && !ok) error = slots[i].Text() + " does not hold what was written";
    }
    if (ok) return {};

    // Every place back as read before; a place already so is written again, which costs nothing.
    std::string failure;
    std::vector<State> unknown(slots.size(), Content{~0u, {}, true});
    const bool restored = writeAll(before, unknown, failure);
    std::string check;
    bool same = restored;
    for (std::size_t i = 0; same && i < slots.size(); ++i) {
        auto state = Read(slots[i], check);
        same = state && *state == before[i];
    }
    return {4, error + (same ? "; everything was put back as it was"
                             : "; putting it back failed too (" + failure + check + "), check " + slots.front().Text())};
}

}  // namespace tessmark::console
