#pragma once
// The state of the plain controls the forms share: a tree of sections and a label.
#include <string>
#include <vector>

#include "vb/vb.h"

namespace tessmark::forms {

struct TreeNodeState {
    std::string Key;
    std::string Text;
    std::string ParentKey;  // empty for the root
    int Image = 0;
    bool Expanded = false;
};

// A tree: nodes in the order they were added, one of them selected.
struct TreeState {
    std::vector<TreeNodeState> Nodes;
    long selected = -1;  // index into Nodes
    bool Enabled = true;

    // Error 91 when nothing is selected.
    const TreeNodeState& SelectedItem() const {
        if (selected < 0 || selected >= static_cast<long>(Nodes.size())) throw vb::VbError(vb::err::kObjectNotSet);
        return Nodes[static_cast<std::size_t>(selected)];
    }
    void Select(const std::string& key) {
        for (std::size_t i = 0; i < Nodes.size(); ++i)
            if (Nodes[i].Key == key) selected = static_cast<long>(i);
    }
};

struct LabelState {
    std::string Caption;
    bool Visible = true;
};

}  // namespace tessmark::forms
