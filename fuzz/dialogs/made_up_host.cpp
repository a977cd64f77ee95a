#include "fuzz/dialogs/made_up_host.h"

#include <algorithm>

#include "fuzz/fault.h"
#include "host/resources/texts.h"
#include "host/services/setup.h"

namespace fuzz {
namespace {

bool mayStandInParameters(char16_t c) {
  constexpr std::u16string_view Others = u"-._~%=&";
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
         Others.find(c) != Others.npos;
}

void expectProper(const host::ExchangeRequest& request) {
  expect(std::all_of(request.uriParameters.str().begin(), request.uriParameters.str().end(),
                     mayStandInParameters),
         "parameters are percent-encoded");
  if (request.document == nullptr || request.document->Root() == nullptr) return;
  XmlDocument again;
  host::XmlError error;
  if (!again.Parse(request.document->ToString(), &error))
    fault("what is sent is no XML: " + error.text());
}

}  // namespace

MadeUpController::MadeUpController(Input& input)
    : input_(input), replies_{input.document(), input.document()} {}

host::ExchangeReply MadeUpController::exchange(const host::ExchangeRequest& request) {
  expectProper(request);
  if (request.kind == host::CommandKind::put) ++writes_;
  host::ExchangeReply reply;
  reply.status = host::ExchangeReply::Status::succeeded;
  const std::uint8_t how = input_.byte();
  if (how < 0xE0) {
    if (request.kind == host::CommandKind::put) return reply;
    host::XmlError error;
    if (reply.document.Parse(replies_[how < 0xA0 ? 0 : 1], &error)) return reply;
    reply.status = host::ExchangeReply::Status::failed;
    reply.error = XCBasicString::FromUtf8(error.text());
  } else if (how < 0xF0) {
    reply.status = host::ExchangeReply::Status::failed;
    if (how % 2 == 0) reply.error = u"Refused: %s %d %n";
  } else if (how < 0xF8) {
    reply.status = host::ExchangeReply::Status::cancelled;
  }
  return reply;
}

XmlDocument MadeUpController::reply(std::size_t number) const {
  XmlDocument document;
  document.Parse(replies_[number]);
  return document;
}

std::array<std::uint8_t, 16> MadeUpHost::CountingIds::next() {
  ++given_;
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < 4; ++i) bytes[15 - i] = static_cast<std::uint8_t>(given_ >> (8 * i));
  return bytes;
}

MadeUpHost::Texts::Texts() {
  static bool loaded = false;
  std::string cause;
  if (!loaded && !host::loadTexts(LAMP_TEXTS_FOLDER, "en", cause)) fault(cause);
  loaded = true;
}

MadeUpHost::MadeUpHost(Input& input, const std::filesystem::path& folder)
    : controller_(input), user_(input), files_(folder) {
  host::installServices({&clock_, &ids_, &controller_, &user_, &settings_});
  XCVarnisSetup::Get().SetConfigurationPath(folder);
  files_.put(folder / "firmware.tar", "a firmware");
  user_.offerFile(folder / "firmware.tar");
  user_.whenAllClosed([this] { writesWhenClosed_ = controller_.writes(); });
  host::setDriverRegistry(&catalogue_);
  XCMainCfg::Get().Document().Parse(R"(<configuration><commSystem><device>
      <id>{D1}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>
      <name>Main street</name><description>From the bridge to the park</description>
      <identifier>LM-0001</identifier><address>192.168.1.20</address><socket>8080</socket>
      <ftpAddress>192.168.1.2</ftpAddress><ftpPort>21</ftpPort><ftpUser>lamps</ftpUser>
      <ftpPassword>secret</ftpPassword><calendar>Summer</calendar>
      <childDevices><childDevice><id>{L1}</id><driver>ZELLAMP</driver><name>N1</name></childDevice>
      <childDevice><id>{L2}</id><driver>ZELLAMP</driver><name>N2</name></childDevice></childDevices>
      </device>
      <device><id>{D2}</id><driver>ZELLAMPMANAGER</driver><name>Side street</name>
      <address>192.168.1.21</address><socket>8080</socket></device></commSystem>
      <deviceGroups><groups><group><id>Main street</id><devices/><groups><group><id>North</id>
      <devices><device><id>{L1}</id></device></devices></group></groups></group></groups>
      </deviceGroups><viewSetups/></configuration>)");
}

MadeUpHost::~MadeUpHost() {
  host::setDriverRegistry(nullptr);
  XCMainCfg::Get().Document().Clear();
  XCVarnisSetup::Get().SetConfigurationPath({});
}

void MadeUpHost::show(XCBaseDlg& dialog) {
  const int result = dialog.DoModal();
  expect(result == IDOK || result == IDCANCEL, "a dialog ends with OK or Cancel");
  expect(result == IDOK || controller_.writes() == writesWhenClosed_,
         "a dialog that was cancelled sends nothing any more");
}

XmlDocument::XmlNode* MadeUpHost::device() {
  return XCMainCfg::Get().DeviceNode(u"{D1}");
}

}  // namespace fuzz
