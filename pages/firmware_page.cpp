#include "pages/firmware_page.h"

#include "exchange/template_numbers.h"
#include "host/services/file_dialog.h"
#include "host/services/files.h"
#include "host/services/identity.h"

using host::TextId;
using Infrastructure::FileDialogSupportNS::FileDialogSupport;
namespace layout = host::layout;

namespace {

enum Id {
  FileGroup = host::privateId(0),
  FileLabel,
  File,
  Load,
  ActivationLabel,
  Activation,
};

constexpr const char* FilePattern = "*.tar";

const host::XmlName FirmwareFile("firmwareFile");
const host::XmlName Firmware("Firmware");

// The page sets no limit; this is what one text of a document can hold once it is encoded.
constexpr std::size_t LargestFile = host::XmlText::MaxSize / 4 * 3;

constexpr int PathWidth = 320;

host::PageDescription makeTable() {
  host::PageDescription page;
  page.writeSection = lamp::section::FirmwareWrite;
  page.form = host::WriteForm::order;
  page.activation = Id::Activation;
  return page;
}

}  // namespace

const host::PageDescription& CDlgE03CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE03CfgZelLampManager::CDlgE03CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DescribedPage(lamp::template_number::Firmware, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE03CfgZelLampManager::Template() {
  return {
      lamp::template_number::Firmware,
      "CDlgE03CfgZelLampManager",
      "E03",
      {host::group(Id::FileGroup, "fileGroup", TextId::Update),
       host::label(Id::FileLabel, "fileLabel", TextId::File), host::readOnlyEdit(Id::File, "file"),
       host::button(Id::Load, "load", TextId::Load, "LOAD-16.png"),
       host::label(Id::ActivationLabel, "activationLabel", TextId::DateAndTime),
       host::edit(Id::Activation, "activation"), host::okButton(TextId::Send),
       host::cancelButton()}};
}

const host::MessageMap* CDlgE03CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&CDlgE03CfgZelLampManager::OnLoad>(Id::Load)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE03CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::Update));
  return DescribedPage::OnInitDialog();
}

void CDlgE03CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::FileGroup, {layout::control(Id::FileLabel),
                                   XCHoritzontalLayout({layout::control(Id::File, 1, PathWidth),
                                                        layout::control(Id::Load)}),
                                   layout::labelled(Id::ActivationLabel, Id::Activation)}),
       layout::stretch(), layout::okCancelRow()}));
}

void CDlgE03CfgZelLampManager::chooseFile() {
  const XCBasicString filters =
      FileDialogSupport::PrepareFilters({{XCLoadString(TextId::FirmwareFiles), FilePattern}});
  const std::filesystem::path chosen = FileDialogSupport::OpenFileDialog(this, filters);
  if (chosen.empty()) return;
  file_ = chosen;
  shownPath_ = XCBasicString::FromUtf8(chosen.string());
  SetDlgItemText(Id::File, shownPath_);
}

std::vector<host::OrderedValue> CDlgE03CfgZelLampManager::Ordered() const {
  if (file_.empty()) return {};
  return {{std::nullopt, std::string(Firmware.text()), {TextId::File}, shownPath_}};
}

// The bytes are let go as soon as they are encoded: a large file never lies here more than twice.
std::optional<std::string> CDlgE03CfgZelLampManager::encodedFile() const {
  std::string bytes;
  std::string cause;
  if (file_.empty() || !host::readFile(file_, LargestFile, bytes, cause)) return std::nullopt;
  return EncodeBase64(bytes);
}

bool CDlgE03CfgZelLampManager::Write() {
  std::optional<std::string> content = encodedFile();
  if (!content) {
    chooseFile();
    return false;
  }
  const std::optional<XCBasicString> stamp = CheckedStamp();
  if (!stamp) return false;
  XmlDocument command;
  XmlDocument::XmlNode& root = command.Create(lamp::element::DeviceCfg);
  root.SetNarrowValue(FirmwareFile, *std::move(content));
  XmlDocument::XmlNode& firmware = root.NewChild(lamp::section::FirmwareWrite);
  // The path, not the bare name of the file: the controller keeps it as it stands.
  firmware.setAttribute(Firmware, shownPath_);
  firmware.setAttribute(lamp::attribute::ActivationDate, *stamp);
  return lamp::sendOnce(*this, lamp::Command::uploadFirmware, command);
}
