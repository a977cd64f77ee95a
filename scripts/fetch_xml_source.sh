#!/usr/bin/env bash
# Fetches the source of the XML library, the version that is installed, into a folder:
# scripts/fetch_xml_source.sh FOLDER. The benchmarks compile it into one of their programs; nothing
# else does. It comes from where the machine's packages come from.
set -euo pipefail
folder=$1
[ -f "$folder/pugixml.cpp" ] && exit 0

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/lists/partial" "$folder"
cat /etc/apt/sources.list.d/*.sources 2>/dev/null |
  sed 's/^Types:.*/Types: deb-src/' >"$work/all.sources" || true
if [ -f /etc/apt/sources.list ]; then
  sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$work/more.list"
fi
options=(-qq -o APT::Sandbox::User=root -o "Dir::Etc::sourcelist=-" -o "Dir::Etc::sourceparts=$work"
  -o "Dir::State::lists=$work/lists")
version=$(dpkg-query -W -f '${source:Version}' libpugixml-dev)
(
  cd "$work"
  apt-get "${options[@]}" update
  apt-get "${options[@]}" source --download-only "pugixml=$version" 2>/dev/null
  tar xf pugixml_*.orig.tar.*
)
find "$work" -path '*/src/pugi*pp' -exec cp {} "$folder/" \;
[ -f "$folder/pugixml.cpp" ] || {
  echo "The source of pugixml $version could not be fetched." >&2
  exit 1
}
