#pragma once
// The main window's class and the identifiers of its controls, also known to
// the programs that drive the window from outside.
namespace tessmark::app::id {

inline constexpr const char* kMainWindowClass = "TessmarkMain";

inline constexpr int treeAuto = 100;
inline constexpr int Splitter1 = 101;
inline constexpr int Splitter2 = 102;
inline constexpr int Picture3 = 103;
inline constexpr int ListView1 = 104;
inline constexpr int lblwait = 105;
inline constexpr int picDetails = 106;
inline constexpr int picIcon = 107;
inline constexpr int lblNameVer = 108;
inline constexpr int lblCompanyName = 109;
inline constexpr int LblSection = 110;
inline constexpr int LblDescription = 111;
inline constexpr int imgCheck = 112;
inline constexpr int imgNoCheck = 113;
inline constexpr int lbltotalitem = 114;
inline constexpr int lblactiveitem = 115;
inline constexpr int Command1 = 116;
inline constexpr int BtnClose = 117;
inline constexpr int CmdClose = 118;
inline constexpr int CmdMinimise = 119;

// The dialogs: one class, told apart by their captions "Move" and "Edit Properties".
inline constexpr const char* kDialogClass = "TessmarkDialog";
inline constexpr int dialogCmdClose = 200;
inline constexpr int moveTree = 201;
inline constexpr int lblEntry = 202;
inline constexpr int cmdCommon0 = 203;  // "&Ok"
inline constexpr int cmdCommon1 = 204;  // "&Cancel"
inline constexpr int txtName = 205;
inline constexpr int txtPath = 206;
inline constexpr int lblSection = 207;
inline constexpr int cmdChange = 208;
inline constexpr int editCommand0 = 209;  // "&Ok"
inline constexpr int editCommand1 = 210;  // "&Cancel"

}  // namespace tessmark::app::id
