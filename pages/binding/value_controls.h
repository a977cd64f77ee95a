#pragma once

#include <initializer_list>
#include <optional>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/page_description.h"

// The controls of a page's values, by their table.

namespace lamp {

/// The control of a value, without its label.
host::ControlSpec controlOf(const host::Binding& binding);

/// The label and the edit of each value, in order.
std::vector<host::ControlSpec> controlsOf(const std::vector<host::Binding>& bindings);

/// Gives the labels of the values their captions.
void showCaptions(XCBaseDlg& dialog, const std::vector<host::Binding>& bindings);

/// Gives a drop-down list the choices of its value, none of them chosen.
void fillChoices(host::ComboControl& combo, const host::Binding& binding);

/// Shows the value of an element in its control. A drop-down list chooses the entry of exactly this
/// value, else none; only an explicit "N" leaves a box unchecked.
void showValue(XCBaseDlg& dialog, int control, const host::Binding& binding,
               const XmlDocument::XmlNode& element);

/// What a control holds, as its value is sent; none for a drop-down list without a chosen entry.
std::optional<XCBasicString> valueOn(const XCBaseDlg& dialog, int control,
                                     const host::Binding& binding);

/// The label of a value above its edit.
host::LayoutItem labelled(const host::Binding& binding, int stretchFactor = 0);

/// A list column that shows a value, under its caption's text or its column's header.
host::ListColumn columnOf(const host::Binding& binding);

/// Columns for the values of rows, behind the one that says who a row is.
std::vector<host::ListColumn> columnsOf(host::ListColumn identity,
                                        const std::vector<host::Binding>& bindings);

/// The table of a dialog, put together from pieces.
std::vector<host::ControlSpec> joined(std::initializer_list<std::vector<host::ControlSpec>> pieces);

}  // namespace lamp
