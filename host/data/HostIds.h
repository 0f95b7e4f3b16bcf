#pragma once

// The numbers host and module agree on, by name: message ids and the operation kinds of
// undo records. docs/messages.md tells what each message carries.

// Messages the host sends to the module's pages.
namespace MsgId {
enum : int {
    RibbonCombo = 5,      // a ribbon combo's choice
    RibbonCommand = 6,    // a ribbon button or drop-down entry
    Activated = 12,       // the container was shown: re-announce the page
    ProjectSaved = 31,    // the project was saved
    RefreshPages = 41,    // refresh every created page of a container
    ActivatePage = 49,    // make a page visible and current
    ProjectClosing = 71,  // the project is about to close
    NodeClicked = 74,     // a project-tree node was clicked
    SettingChanged = 78,  // a project setting changed
    NodeSelected = 79,    // a node is selected by the program
    RecordReplayed = 606, // an undo or redo was replayed
    TemplateNames = 7000, // the current page's table-header template names
    SwitchHeaderTemplate = 7002,
    SaveHeaderTemplate = 7003,
    RenameColumn = 7004,
    HeaderSettings = 7005,
    ListHeaderTemplates = 7006
};
} // namespace MsgId

// Messages the module sends to the host (target HostTarget).
namespace HostMsg {
enum : int {
    HostTarget = 4,
    ShowRibbon = 15,     // the page's menu configuration file
    TabChanged = 30,     // the current tab changed
    RibbonItemState = 47 // a ribbon item's state, combo text or choices
};
} // namespace HostMsg

// The operation kind an undo record carries with its label.
namespace OperationKind {
enum : int {
    Edit = 8,      // a cell edit or a row command
    Summary = 10,  // summarising or refreshing a list from the unit projects
    KeepRows = 11, // keeping the first rows of a list
    MoveRows = 22, // dragging rows
    Sort = 25      // sorting a list
};
} // namespace OperationKind
