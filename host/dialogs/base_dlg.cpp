#include "host/dialogs/base_dlg.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

#include "host/dialogs/extension_module.h"
#include "host/dialogs/guard.h"
#include "host/text/utf.h"

using host::Control;
using host::ControlKind;
using host::ControlSpec;
using host::Notice;

CWnd::~CWnd() = default;

namespace {

std::unique_ptr<Control> makeControl(host::ControlOwner& owner, const ControlSpec& spec) {
  switch (spec.kind) {
    case ControlKind::edit:
      return std::make_unique<host::EditControl>(owner, spec);
    case ControlKind::combo:
      return std::make_unique<host::ComboControl>(owner, spec);
    case ControlKind::check:
    case ControlKind::radio:
      return std::make_unique<host::CheckControl>(owner, spec);
    case ControlKind::list:
      return std::make_unique<host::ListControl>(owner, spec);
    case ControlKind::ip:
      return std::make_unique<host::IpControl>(owner, spec);
    case ControlKind::year:
      return std::make_unique<XCCalendar>(owner, spec);
    case ControlKind::button:
      return std::make_unique<CImageButton>(owner, spec);
    case ControlKind::image:
      return std::make_unique<host::ImageControl>(owner, spec);
    case ControlKind::label:
    case ControlKind::group:
      break;
  }
  return std::make_unique<Control>(owner, spec);
}

bool takesFocus(const Control& control) {
  return control.isEnabled() && control.isVisible() && control.kind() != ControlKind::label &&
         control.kind() != ControlKind::group && control.kind() != ControlKind::image;
}

const host::MessageEntry* findEntry(const host::MessageMap* map, Notice notice, int id) {
  for (; map != nullptr; map = map->base)
    for (const host::MessageEntry& entry : map->entries)
      if (entry.notice == notice && id >= entry.first && id <= entry.last) return &entry;
  return nullptr;
}

bool isUnreserved(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~';
}

// Percent-encoding of RFC 3986 over UTF-8.
std::u16string percentEncoded(std::u16string_view text) {
  constexpr char16_t Hex[] = u"0123456789ABCDEF";
  std::u16string out;
  for (const char c : host::toUtf8(text)) {
    const auto byte = static_cast<unsigned char>(c);
    if (isUnreserved(c)) {
      out += static_cast<char16_t>(byte);
    } else {
      out += u'%';
      out += Hex[byte >> 4];
      out += Hex[byte & 15];
    }
  }
  return out;
}

}  // namespace

XCBaseDlg::XCBaseDlg(int templateNumber, CWnd* parent)
    : CWnd(parent), templateNumber_(templateNumber) {
  buildControls();
}

XCBaseDlg::~XCBaseDlg() {
  if (shown_) host::services().frontEnd().forget(*this);
}

bool XCBaseDlg::buildControls() {
  const host::DialogTemplate* found = host::findTemplate(templateNumber_);
  if (found == nullptr) return false;
  className_ = found->className;
  CWnd::SetWindowText(host::toUtf16(found->title));
  controls_.reserve(found->controls.size());
  for (const ControlSpec& spec : found->controls) controls_.push_back(makeControl(*this, spec));
  return true;
}

void XCBaseDlg::initialise() {
  const bool chooseFocus = OnInitDialog();
  if (layout_.items.empty()) Layout();
  if (!chooseFocus || focus_ != nullptr) return;
  const auto first = std::find_if(controls_.begin(), controls_.end(),
                                  [](const auto& control) { return takesFocus(*control); });
  if (first != controls_.end()) focus_ = first->get();
}

template <class Action>
bool XCBaseDlg::attempt(const Action& action) {
  std::exception_ptr failure;
  try {
    const host::Guard guard;
    action();
    return true;
  } catch (...) {
    failure = std::current_exception();
  }
  host::tellFailure(this, failure);
  return false;
}

int XCBaseDlg::DoModal() {
  if (controls_.empty()) return IDCANCEL;
  ended_ = false;
  result_ = IDCANCEL;
  shown_ = true;
  if (!attempt([this] { initialise(); })) return IDCANCEL;
  if (ended_) return result_;
  const host::FrontEndLoop loop;
  host::services().frontEnd().runModal(*this);
  return result_;
}

bool XCBaseDlg::Create(CWnd* parent) {
  if (controls_.empty()) return false;
  shown_ = true;
  if (!attempt([this] { initialise(); })) return false;
  return !ended_ && host::services().frontEnd().showChild(*this, parent);
}

void XCBaseDlg::SetWindowText(std::u16string_view title) {
  CWnd::SetWindowText(title);
  tellFrontEnd();
}

bool XCBaseDlg::OnInitDialog() {
  UpdateData(false);
  return true;
}
void XCBaseDlg::OnOK() {
  EndDialog(IDOK);
}
void XCBaseDlg::OnCancel() {
  EndDialog(IDCANCEL);
}
void XCBaseDlg::OnClose() {
  OnCancel();
}
void XCBaseDlg::DoDataExchange(CDataExchange*) {}
const host::MessageMap* XCBaseDlg::GetMessageMap() const {
  return nullptr;
}

void XCBaseDlg::Layout() {
  host::LayoutItem column;
  for (const auto& control : controls_)
    column.items.push_back(host::layout::control(control->id()));
  SetLayout(std::move(column));
}

bool XCBaseDlg::addUriParams(XCBasicString&, bool) {
  return true;
}

Control* XCBaseDlg::FindControl(int id) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [id](const auto& control) { return control->id() == id; });
  return found == controls_.end() ? nullptr : found->get();
}

Control* XCBaseDlg::FindControl(std::string_view name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [name](const auto& control) { return control->name() == name; });
  return found == controls_.end() ? nullptr : found->get();
}

Control& XCBaseDlg::GetDlgItem(int id) const {
  Control* found = FindControl(id);
  if (found == nullptr)
    throw std::logic_error("the template " + std::to_string(templateNumber_) + " has no control " +
                           std::to_string(id));
  return *found;
}

void XCBaseDlg::UpdateData(bool saveAndValidate) {
  CDataExchange exchange(*this, saveAndValidate);
  DoDataExchange(&exchange);
}

void XCBaseDlg::SetFocus(Control& control) {
  if (focus_ == &control) return;
  focus_ = &control;
  tellFrontEnd();
}

void XCBaseDlg::FocusAndSelectAll(int id) {
  Control& control = GetDlgItem(id);
  SetFocus(control);
  if (auto* edit = dynamic_cast<host::EditControl*>(&control)) edit->selectAll();
}

void XCBaseDlg::SetLayout(host::LayoutItem layout) {
  layout_ = std::move(layout);
  tellFrontEnd();
}

int XCBaseDlg::MessageBox(std::u16string_view text, host::MessageButtons buttons,
                          host::MessageIcon icon) {
  const host::FrontEndLoop loop;
  return static_cast<int>(
      host::services().frontEnd().ask({this, XCBasicString(text), buttons, icon}));
}

void XCBaseDlg::PostMessage(int message, int parameter) {
  posted_.emplace_back(message, parameter);
}

void XCBaseDlg::DispatchPosted() {
  if (dispatching_) return;
  dispatching_ = true;
  while (!posted_.empty() && !ended_) {
    const int message = posted_.front().first;
    const int parameter = posted_.front().second;
    posted_.pop_front();
    if (const auto* entry = findEntry(GetMessageMap(), Notice::posted, message))
      attempt([&] { entry->call(*this, {parameter, parameter}); });
  }
  dispatching_ = false;
}

bool XCBaseDlg::dispatch(Notice notice, int id, int parameter) {
  const host::MessageEntry* entry = findEntry(GetMessageMap(), notice, id);
  if (entry == nullptr) return false;
  attempt([&] { entry->call(*this, {id, parameter}); });
  return true;
}

void XCBaseDlg::onNotice(Control& control, Notice notice, int parameter) {
  if (dispatch(notice, control.id(), parameter) || notice != Notice::clicked) return;
  if (control.id() == IDOK) PressOk();
  if (control.id() == IDCANCEL) PressCancel();
}

void XCBaseDlg::onChanged(Control&) {
  tellFrontEnd();
}

void XCBaseDlg::tellFrontEnd() {
  if (shown_) host::services().frontEnd().dialogChanged(*this);
}

void XCBaseDlg::EndDialog(int result) {
  ended_ = true;
  result_ = result;
  tellFrontEnd();
}

void XCBaseDlg::PressOk() {
  attempt([this] { OnOK(); });
}
void XCBaseDlg::PressCancel() {
  attempt([this] { OnCancel(); });
}
void XCBaseDlg::PressClose() {
  attempt([this] { OnClose(); });
}

void XCBaseDlg::TurnOffOtherRadios(Control& chosen) {
  const auto at = std::find_if(controls_.begin(), controls_.end(),
                               [&](const auto& control) { return control.get() == &chosen; });
  const auto isRadio = [](const auto& control) { return control->kind() == ControlKind::radio; };
  auto first = at;
  while (first != controls_.begin() && isRadio(*(first - 1))) --first;
  for (; first != controls_.end() && isRadio(*first); ++first)
    if (first->get() != &chosen) dynamic_cast<host::CheckControl&>(**first).setOn(false);
}

// --- commands

bool XCBaseDlg::exchange(int command, host::CommandKind kind, XmlDocument& document) {
  XCBasicString uri;
  addUriParams(uri, true);
  host::ExchangeReply reply = host::services().channel().exchange({command, kind, uri, &document});
  using Status = host::ExchangeReply::Status;
  silentFailure_ = reply.status == Status::cancelled;
  error_ = reply.status == Status::failed ? std::move(reply.error) : XCBasicString();
  if (reply.status != Status::succeeded) return false;
  if (kind == host::CommandKind::get) document = std::move(reply.document);
  return true;
}

bool XCBaseDlg::getCommand(int command, XmlDocument* document, bool) {
  return exchange(command, host::CommandKind::get, *document);
}

bool XCBaseDlg::putCommand(int command, XmlDocument* document, bool) {
  return exchange(command, host::CommandKind::put, *document);
}

bool XCBaseDlg::addUriParam(XCBasicString& uri, std::u16string_view name, std::u16string_view value,
                            bool first) {
  if (name.empty()) return false;
  if (!first) uri += u"&";
  uri += percentEncoded(name);
  uri += u"=";
  uri += percentEncoded(value);
  return true;
}

bool XCBaseDlg::needVerifyConnection(bool existingDevice) {
  return host::services().settings().verifyConnection(existingDevice);
}

// --- data exchange

void DDX_Text(CDataExchange& exchange, int controlId, XCBasicString& value) {
  Control& control = exchange.m_pDlgWnd.GetDlgItem(controlId);
  if (exchange.m_bSaveAndValidate)
    value = control.text();
  else
    control.setText(value);
}

void DDX_Check(CDataExchange& exchange, int controlId, bool& value) {
  host::CheckControl& control = exchange.m_pDlgWnd.Check(controlId);
  if (exchange.m_bSaveAndValidate)
    value = control.isOn();
  else
    control.setOn(value);
}

void DDX_Radio(CDataExchange& exchange, int firstId, int& value) {
  const auto& controls = exchange.m_pDlgWnd.Controls();
  auto at = std::find_if(controls.begin(), controls.end(),
                         [firstId](const auto& control) { return control->id() == firstId; });
  if (exchange.m_bSaveAndValidate) value = -1;
  for (int index = 0; at != controls.end() && (*at)->kind() == ControlKind::radio; ++at, ++index) {
    auto& button = dynamic_cast<host::CheckControl&>(**at);
    if (!exchange.m_bSaveAndValidate)
      button.setOn(index == value);
    else if (button.isOn())
      value = index;
  }
}
