#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs/data_exchange.h"
#include "host/dialogs/message_map.h"
#include "host/dialogs/page_description.h"
#include "host/dialogs/wnd.h"
#include "host/resources/texts.h"
#include "host/services/services.h"
#include "host/ui/control.h"
#include "host/ui/controls/calendar_control.h"
#include "host/ui/controls/choice_controls.h"
#include "host/ui/controls/edit_control.h"
#include "host/ui/controls/image_controls.h"
#include "host/ui/controls/list_control.h"
#include "host/ui/layout.h"
#include "host/xml/xml_document.h"

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDRETRY = 4;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

/// The base of every dialog: controls made from a template, handlers in a message map, an
/// arrangement, and the commands to a controller. The front end that is installed shows it.
class HOST_API XCBaseDlg : public CWnd, private host::ControlOwner {
 public:
  /// A dialog on the template with a number, which the registered modules or the host itself hold.
  XCBaseDlg(int templateNumber, CWnd* parent);
  ~XCBaseDlg() override;

  /// Builds the controls, initialises, runs until the dialog ends and returns IDOK or IDCANCEL.
  virtual int DoModal();
  /// Builds the controls, initialises and shows the dialog as a child of @p parent. False when
  /// there is no template or the front end can't show it.
  bool Create(CWnd* parent);

  /// The name of the class and the number of the template, as the template states them.
  const std::string& ClassName() const { return className_; }
  int TemplateNumber() const { return templateNumber_; }
  void SetWindowText(std::u16string_view title) override;

 protected:
  /// For classes that share the template of their base.
  void SetClassName(std::string name) { className_ = std::move(name); }

 public:
  // --- what derived dialogs override. The order is part of the contract: plug-ins call by it.

  virtual const host::MessageMap* GetMessageMap() const;
  virtual void DoDataExchange(CDataExchange* exchange);
  /// Fills the dialog. The return value says whether the host chooses the first focus.
  virtual bool OnInitDialog();
  virtual void OnOK();
  virtual void OnCancel();
  /// The window's close button; as Cancel unless overridden.
  virtual void OnClose();
  /// Arranges the controls by SetLayout. Without one they stand one below the other.
  virtual void Layout();
  /// Appends the parameters that address the controller to @p uri. Returns true.
  virtual bool addUriParams(XCBasicString& uri, bool first);
  /// What the dialog edits, null for a dialog that edits nothing.
  virtual host::EditedPage* Edits() { return nullptr; }

  // --- controls

  /// The control with an id, which must exist in the template.
  host::Control& GetDlgItem(int id) const;
  host::Control* FindControl(int id) const;
  host::Control* FindControl(std::string_view name) const;
  template <class ControlType>
  ControlType& Get(int id) const {
    return dynamic_cast<ControlType&>(GetDlgItem(id));
  }
  host::EditControl& Edit(int id) const { return Get<host::EditControl>(id); }
  host::ComboControl& Combo(int id) const { return Get<host::ComboControl>(id); }
  host::CheckControl& Check(int id) const { return Get<host::CheckControl>(id); }
  host::ListControl& List(int id) const { return Get<host::ListControl>(id); }
  const XCBasicString& GetDlgItemText(int id) const { return GetDlgItem(id).text(); }
  void SetDlgItemText(int id, std::u16string_view text) { GetDlgItem(id).setText(text); }
  void SetDlgItemText(int id, host::TextId text) { GetDlgItem(id).setText(XCLoadString(text)); }

  const std::vector<std::unique_ptr<host::Control>>& Controls() const { return controls_; }

  /// Moves the data between controls and members: true from the controls to the members.
  void UpdateData(bool saveAndValidate);

  host::Control* Focus() const { return focus_; }
  void SetFocus(host::Control& control);
  /// Puts the focus on an edit and selects its whole text.
  void FocusAndSelectAll(int id);

  const host::LayoutItem& Arrangement() const { return layout_; }
  void SetLayout(host::LayoutItem layout);

  /// Asks in a message box in front of this dialog; returns IDOK, IDCANCEL, IDRETRY, IDYES or IDNO.
  int MessageBox(std::u16string_view text, host::MessageButtons buttons = host::MessageButtons::ok,
                 host::MessageIcon icon = host::MessageIcon::none);
  int MessageBox(host::TextId text, host::MessageButtons buttons = host::MessageButtons::ok,
                 host::MessageIcon icon = host::MessageIcon::none) {
    return MessageBox(XCLoadString(text), buttons, icon);
  }

  /// Queues a message to this dialog, handled when the notice at hand is over.
  void PostMessage(int message, int parameter);
  /// Handles queued messages. Front ends get there through UserInput.
  void DispatchPosted();

  // --- life

  /// Ends the dialog with IDOK or IDCANCEL.
  void EndDialog(int result);
  bool HasEnded() const { return ended_; }
  int Result() const { return result_; }
  /// What the user's keys and window buttons lead to.
  void PressOk();
  void PressCancel();
  void PressClose();
  void TurnOffOtherRadios(host::Control& chosen);

  // --- commands to the controller

  /// Sends the request in @p document and replaces it by the reply. On failure the document stays,
  /// getErrorMsg tells why, and silentFailure whether the user cancelled.
  bool getCommand(int command, XmlDocument* document, bool wait);
  /// Sends @p document, which stays as it is.
  bool putCommand(int command, XmlDocument* document, bool wait);
  /// The text of the last failure, possibly empty; a successful command clears it.
  const XCBasicString& getErrorMsg() const { return error_; }
  bool silentFailure() const { return silentFailure_; }
  /// Appends "name=value", percent-encoded, with "&" in front unless it is the first. Returns true
  /// when it appended something.
  static bool addUriParam(XCBasicString& uri, std::u16string_view name, std::u16string_view value,
                          bool first);
  /// Whether the connection to a device is to be verified when it is saved.
  static bool needVerifyConnection(bool existingDevice);

 private:
  void onNotice(host::Control& control, host::Notice notice, int parameter) override;
  void onChanged(host::Control& control) override;
  bool buildControls();
  bool dispatch(host::Notice notice, int id, int parameter);
  // Does what can run out of memory; says so and answers false when it did. The dialog goes on.
  template <class Action>
  bool attempt(const Action& action);
  void initialise();
  bool exchange(int command, host::CommandKind kind, XmlDocument& document);
  void tellFrontEnd();

  int templateNumber_;
  std::string className_;
  std::vector<std::unique_ptr<host::Control>> controls_;
  host::Control* focus_ = nullptr;
  host::LayoutItem layout_;
  std::deque<std::pair<int, int>> posted_;
  bool dispatching_ = false;
  bool shown_ = false;
  bool ended_ = false;
  int result_ = IDCANCEL;
  XCBasicString error_;
  bool silentFailure_ = false;
};
