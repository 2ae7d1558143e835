#!/bin/sh
# Packs the build folder given as first argument, unpacks the archive, validates its desktop files,
# and runs the programs and the tour in it. The second argument is the version.
set -eux
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export HOME="$place" XDG_DATA_HOME="$place/data" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
id=example.kovant.quirel

cpack --config "$1/CPackConfig.cmake" -B "$place/made"
mkdir "$place/unpacked"
tar -xzf "$place"/made/quirel-"$2"-*.tar.gz -C "$place/unpacked"
mv "$place"/unpacked/quirel-* "$place/100% \$掌"
rmdir "$place/unpacked"
cd "$place/100% \$掌"
[ "$(echo *)" = "CHANGELOG.md CONTRIBUTING.md INSTALL.md README.md docs img install-desktop-entry \
quirel quirel-simulator remote share translations" ]
rmdir img remote && mkdir img remote # They were empty.
grep -F "<release version=\"$2\"" share/metainfo/$id.metainfo.xml
appstreamcli validate --no-net share/metainfo/$id.metainfo.xml

[ "$(./quirel-simulator --version)" = "quirel-simulator $2" ]
LANGUAGE=zh_CN ./quirel --help | grep 掌
timeout 2 ./quirel && exit 1 || [ $? -eq 124 ] # The window stays.
cp "$1/bin/tour" .
./tour --output "$place/pictures"

./install-desktop-entry
desktop-file-validate "$place/data/applications/$id.desktop"
grep -F '/100%% \\$掌/quirel"' "$place/data/applications/$id.desktop"
./install-desktop-entry --remove
[ -z "$(find "$place/data" -name "$id*")" ]
