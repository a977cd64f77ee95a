#pragma once

#include <pugixml.hpp>
#include <string>

#include "controller/model/refusal.h"
#include "controller/model/section_view.h"

namespace lamp::controller {

/// Whose answer it is and what its clock shows.
struct ReplyHead {
  std::string id;    ///< the controller's identifier
  std::string date;  ///< 14 digits
};

/// True for "L01" to "L17".
bool isReadSection(std::string_view code);

/// True for the sections that show what the lamps and ports do now: L09, L13 and L15.
bool showsLiveValues(std::string_view code);

/// Builds the reply to a read of `request` (an element "L01" to "L17"): root "deviceCfg", in it
/// "ZelLamp" with the identifier, in it the section with the controller's date as "Fh". Mail user
/// and mail password are never shown. Rows of blacklisted nodes appear in the blacklist only.
Objection readSection(pugi::xml_node request, const SectionView& store, const ReplyHead& head,
                      pugi::xml_document& reply);

/// The same reply as text. Rows are printed from where they lie: a section of many megabytes is
/// never there twice. Nothing is put into `text` after an objection.
Objection printSection(pugi::xml_node request, const SectionView& store, const ReplyHead& head,
                       std::string& text);

/// The reply that only identifies the controller: "deviceCfg" with an empty "ZelLamp".
pugi::xml_node beginReply(const ReplyHead& head, pugi::xml_document& reply);

}  // namespace lamp::controller
