#pragma once
// The main form as the restore-point form sees it: a list it fills anew. The
// main form implements it, so that safety does not include the frame.

namespace tessmark::safety {

class MainList {
public:
    virtual void AddAllKeys() = 0;
    virtual void refreshCheckBox() = 0;

protected:
    ~MainList() = default;
};

}  // namespace tessmark::safety
