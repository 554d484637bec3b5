#pragma once
// The restore-point form: on the first tick of its timer it refreshes the main
// list, then makes a System Restore point through WMI on the versions that
// have one, and closes itself. Nothing in the program shows it.
#include <array>
#include <functional>
#include <string>

#include "forms/Controls.h"
#include "safety/MainList.h"
#include "platform/system_port.h"
#include "platform/ui_services.h"
#include "registry/AdvRegistryAccess.h"

namespace tessmark::safety {

inline constexpr const char* kCreatePointMoniker =
    "winmgmts:{impersonationLevel=impersonate}!root/default:SystemRestore";
inline constexpr const char* kListPointsMoniker = "winmgmts:root/default";
inline constexpr const char* kNotSupported = "System Restore not supported, run Mendwick to backup your registry.";

class SysRes {
public:
    // mainForm gives the main form's one instance, making it if there is none.
    SysRes(platform::UiServices& ui, platform::SystemPort& system, std::function<MainList&()> mainForm);

    // ---- the form and its controls
    std::string Caption = "System Restore";
    forms::LabelState Label2{"System Restore"};
    std::array<forms::LabelState, 2> Label1{{{"Creating System Restore Point"}, {"Please Wait..."}}};
    std::string FontName = "Tahoma";
    int PictureWidth = 400;  // the background picture, in pixels
    int PictureHeight = 137;
    int Timer1Interval = 2000;
    bool Timer1Enabled = false;
    bool Visible = false;
    bool Loaded = false;
    int MousePointer = platform::kMousePointerDefault;
    // The view's part of unloading: the window goes.
    std::function<void()> onUnload = [] {};

    // ---- events and operations
    void Form_Load();
    // Waits until the form shows, then does the work; never returns early.
    void Timer1_Timer();
    // Any failure is swallowed; the unused flag is the form's own quirk.
    void CreatePoint(registry::VbBool& unused);
    void ListPoints();

private:
    void Unload();

    platform::UiServices& ui_;
    platform::SystemPort& system_;
    std::function<MainList&()> mainForm_;
};

}  // namespace tessmark::safety
