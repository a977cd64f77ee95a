#include "pages/node_table_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace layout = host::layout;

namespace {

enum Id {
  NodesGroup = 6513,
  ReferenceLabel = 6514,
  LatitudeLabel = 6515,
  LongitudeLabel = 6516,
  Reference = 6517,
  Latitude = 6518,
  Longitude = 6519,
  Nodes = 6520,
};

constexpr int ReferenceLimit = 59;
constexpr int PositionLimit = 10;

// 7-bit ASCII without angle brackets. Texts that are all ASCII lie narrow in their document.
bool isPlainReference(host::XmlText text) {
  return text.isWide() ? text.empty()
                       : text.narrowView().find_first_of("<>") == std::string_view::npos;
}

}  // namespace

CDlgE04CfgZelLampManager::CDlgE04CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::NodeTable, lamp::section::NodesRead, driver, parent),
      copy_(lamp::section::NodesRead),
      rows_(*this, Id::Nodes,
            {{Id::Reference, attribute::Reference},
             {Id::Latitude, attribute::Latitude},
             {Id::Longitude, attribute::Longitude}}) {}

host::DialogTemplate CDlgE04CfgZelLampManager::Template() {
  return {lamp::template_number::NodeTable,
          "CDlgE04CfgZelLampManager",
          "E04",
          {host::group(Id::NodesGroup, "nodesGroup", TextId::NodeReference),
           host::list(Id::Nodes, "nodes"),
           host::label(Id::ReferenceLabel, "referenceLabel", TextId::NodeReference),
           host::edit(Id::Reference, "reference", ReferenceLimit),
           host::label(Id::LatitudeLabel, "latitudeLabel", TextId::Latitude),
           host::edit(Id::Latitude, "latitude", PositionLimit),
           host::label(Id::LongitudeLabel, "longitudeLabel", TextId::Longitude),
           host::edit(Id::Longitude, "longitude", PositionLimit), host::okButton(TextId::Send),
           host::cancelButton()}};
}

const host::MessageMap* CDlgE04CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE04CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Page::OnSelectionChanged>(Id::Nodes),
      host::onChange<&Page::OnEditChanged>(Id::Reference, Id::Longitude)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE04CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeReference);
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  copy_.take(Document());
  rows_.fill(copy_.section(), lamp::isNode, 0);
  return SettingsPage::OnInitDialog();
}

void CDlgE04CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout({layout::box(Id::NodesGroup,
                                          {layout::control(Id::Nodes, 1),
                                           layout::labelled(Id::ReferenceLabel, Id::Reference),
                                           layout::labelled(Id::LatitudeLabel, Id::Latitude),
                                           layout::labelled(Id::LongitudeLabel, Id::Longitude)},
                                          1),
                              layout::okCancelRow()}));
}

bool CDlgE04CfgZelLampManager::refuse(std::size_t row, TextId message, int editId) {
  MessageBox(message);
  List(Id::Nodes).selectOnly(row);
  FocusAndSelectAll(editId);
  return false;
}

bool CDlgE04CfgZelLampManager::Validate() {
  const host::ListControl& nodes = List(Id::Nodes);
  for (std::size_t row = 0; row < nodes.rowCount(); ++row) {
    const XmlDocument::XmlNode& node = *nodes.element(row);
    if (!isPlainReference(node.attribute(attribute::Reference)))
      return refuse(row, TextId::ReferenceInvalid, Id::Reference);
    if (node.attribute(attribute::Latitude).empty())
      return refuse(row, TextId::FieldInvalid, Id::Latitude);
    if (node.attribute(attribute::Longitude).empty())
      return refuse(row, TextId::FieldInvalid, Id::Longitude);
  }
  return true;
}

bool CDlgE04CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  XmlDocument::XmlNode* table = copy_.prepareWrite(Document(), lamp::section::NodesWrite);
  if (table == nullptr) return false;
  table->eraseAttribute(attribute::Stamp);
  return writeCfg(false);
}
