#pragma once

#include "pages/binding/document_page.h"
#include "pages/binding/row_editor.h"

/// The controller's periodic tasks and the actions of each. Every edit goes into a working copy of
/// the section at once; the whole section goes back.
class CDlgE02CfgZelLampManager : public lamp::DocumentPage {
 public:
  CDlgE02CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;
  void Refresh() override;

 private:
  void OnTaskSelected();
  void OnActionSelected();
  void OnTaskKey(host::Key key);
  void OnActionKey(host::Key key);
  void OnStartChanged(int editId) { rows_.editChanged(editId); }
  void OnTaskChoice(int comboId);
  void OnActionChoice(int comboId);
  void OnNewTask();
  void OnDeleteTask();
  void OnNewAction();
  void OnDeleteAction();

  XmlDocument::XmlNode* selectedElement(int listId) const;
  void fillTasks(std::size_t selectedRow);
  void refillKeeping(const XmlDocument::XmlNode& task);
  void enableTaskControls();
  void showNoTask();
  void showActions(const XmlDocument::XmlNode& task);
  void showChoices(const host::RowSet& rows, const XmlDocument::XmlNode* element);
  void choose(const host::RowSet& rows, int comboId, XmlDocument::XmlNode* element);

  lamp::RowEditor rows_;
};
