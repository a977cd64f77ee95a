#include "editor/renderers/renderer_table.h"

#include <algorithm>
#include <stdexcept>

#include "editor/renderers/button_renderer.h"
#include "editor/renderers/check_renderer.h"
#include "editor/renderers/combo_renderer.h"
#include "editor/renderers/edit_renderer.h"
#include "editor/renderers/group_renderer.h"
#include "editor/renderers/image_renderer.h"
#include "editor/renderers/ip_renderer.h"
#include "editor/renderers/label_renderer.h"
#include "editor/renderers/list_renderer.h"
#include "editor/renderers/radio_renderer.h"
#include "editor/renderers/year_renderer.h"

namespace editor {
namespace {

using host::ControlKind;

template <class Renderer, class ControlType>
std::unique_ptr<ControlRenderer> make(XCBaseDlg& dialog, host::Control& control, QWidget* parent) {
  return std::make_unique<Renderer>(dialog, dynamic_cast<ControlType&>(control), parent);
}

struct Entry {
  ControlKind kind;
  std::unique_ptr<ControlRenderer> (*make)(XCBaseDlg&, host::Control&, QWidget*);
};

constexpr Entry Table[] = {
    {ControlKind::label, &make<LabelRenderer, host::Control>},
    {ControlKind::group, &make<GroupRenderer, host::Control>},
    {ControlKind::button, &make<ButtonRenderer, CImageButton>},
    {ControlKind::radio, &make<RadioRenderer, host::CheckControl>},
    {ControlKind::check, &make<CheckRenderer, host::CheckControl>},
    {ControlKind::edit, &make<EditRenderer, host::EditControl>},
    {ControlKind::combo, &make<ComboRenderer, host::ComboControl>},
    {ControlKind::list, &make<ListRenderer, host::ListControl>},
    {ControlKind::ip, &make<IpRenderer, host::IpControl>},
    {ControlKind::year, &make<YearRenderer, XCCalendar>},
    {ControlKind::image, &make<ImageRenderer, host::ImageControl>},
};

const Entry* findEntry(ControlKind kind) {
  const auto* found = std::find_if(std::begin(Table), std::end(Table),
                                   [kind](const Entry& entry) { return entry.kind == kind; });
  return found == std::end(Table) ? nullptr : found;
}

}  // namespace

bool hasRenderer(ControlKind kind) {
  return findEntry(kind) != nullptr;
}

std::unique_ptr<ControlRenderer> makeRenderer(XCBaseDlg& dialog, host::Control& control,
                                              QWidget* parent) {
  const Entry* entry = findEntry(control.kind());
  if (entry == nullptr)
    throw std::logic_error("no renderer draws the control \"" + control.name() + "\"");
  return entry->make(dialog, control, parent);
}

}  // namespace editor
