// What the dialogs take from the user: the change notification's keys, and
// the main form's menus while a dialog is modal.
#include <gtest/gtest.h>

#include "frame/FrmMain2.h"
#include "machine.h"
#include "scripted_view.h"

namespace {

// Tab and Shift+Tab go round the enabled buttons in tab order, from the first (Shift: the last).
TEST(FrmNotify, TabAndShiftTabGoRoundTheEnabledButtonsInTabOrder) {
    const auto machine = tessmark::testing::MakeTestMachine();
    tessmark::frame::FrmMain2 main(machine->Ports());
    tessmark::monitor::FrmNotify& form = main.monitor.forms.New();
    const struct { bool disable, allow, discard; const char *tab, *shiftTab; } cases[] = {
        {true, true, true, "CmdDisable CmdAllow CmdDiscard CmdDisable ",
         "CmdDiscard CmdAllow CmdDisable CmdDiscard "},
        {false, true, true, "CmdAllow CmdDiscard CmdAllow CmdDiscard ", "CmdDiscard CmdAllow CmdDiscard CmdAllow "},
        {false, true, false, "CmdAllow CmdAllow CmdAllow CmdAllow ", "CmdAllow CmdAllow CmdAllow CmdAllow "},
        {false, false, false, "    ", "    "},
    };
    for (const auto& c : cases) {
        std::tie(form.CmdDisable.Enabled, form.CmdAllow.Enabled, form.CmdDiscard.Enabled) =
            std::tie(c.disable, c.allow, c.discard);
        for (bool back : {false, true}) {
            std::string walk;
            std::string_view at;
            for (int press = 0; press < 4; ++press) walk += std::string(at = form.NextButton(at, back)) + " ";
            EXPECT_EQ(walk, back ? c.shiftTab : c.tab) << c.disable << c.allow << c.discard;
        }
    }
}

// The design the view lays the notification out by: sizes, then each control's place, size and font.
TEST(FrmNotify, DesignIsTheOneDrawn) {
    using namespace tessmark::monitor;
    std::string design;
    for (int n : {kNotifyWidth, kNotifyHeight, kNotifyBackgroundWidth, kNotifyBackgroundHeight, kNotifyPanelWidth,
                  kNotifyPanelHeight, kNotifyCloseWidth, kNotifyCloseHeight})
        design += std::to_string(n) + " ";
    for (const NotifyControl& c : kNotifyControls)
        design += "\n" + std::string(c.name) + (c.button ? " button " : " label ") + std::to_string(c.left) + "," +
                  std::to_string(c.top) + " " + std::to_string(c.width) + "x" + std::to_string(c.height) + " font " +
                  std::to_string(static_cast<int>(c.font));
    EXPECT_EQ(tessmark::testing::DigestOf(*tessmark::testing::MakeTestMachine(), design),
              "034b0f26f40253955ec541ef9c61daa77f737479a9cf90de06ccf27ab2f53b86") << design;
}

// The tray's menu, as a right click on the notification area would ask for it.
TEST(FrmMain2, NoMenuOpensWhileADialogIsModal) {
    const auto machine = tessmark::testing::MakeTestMachine();
    tessmark::frame::FrmMain2 main(machine->Ports());
    tessmark::testing::ScriptedView view;
    main.view = &view;
    main.treeAuto.Nodes = {{"runexall", "Run"}};
    main.treeAuto.selected = 0;
    main.ListView1.Select(main.ListView1.Add());
    auto trayMenu = [&] { main.pictray_MouseDown(2, 0, 517 * 15, 0); };
    view.edit = [&](tessmark::forms::FrmEdit&) { trayMenu(); };
    main.mnuProp_Click();
    trayMenu();
    EXPECT_EQ(view.popups, std::vector<std::string>{"mnutrayoption"});
}

}  // namespace
