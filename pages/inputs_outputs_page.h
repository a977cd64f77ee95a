#pragma once

#include <array>

#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"
#include "pages/input_output_grid.h"

/// The controller's inputs and outputs: which inputs report, what switches each output, its manual
/// mode, and the offsets of the astronomical clock. The whole section goes back with an activation
/// date.
class CDlgE13CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE13CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  void DoDataExchange(CDataExchange* exchange) override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnSwitch(int controlId);

  void showCaptions();
  void showSection(const XmlDocument::XmlNode& section);
  void showInput(int input, const XmlDocument::XmlNode& element);
  void showOutput(int output, const XmlDocument::XmlNode& element);
  void takeControls(XmlDocument::XmlNode& section) const;
  void takeOutput(int output, XmlDocument::XmlNode& element) const;

  lamp::WorkingCopy copy_;
  lamp::DateField activation_;
  // The modes as they were read, by output; none for one that was not shown.
  std::array<std::optional<int>, lamp::io::LineCount> readModes_;
};
