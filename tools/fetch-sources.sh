#!/bin/sh
# Fetches source packages and unpacks them, each into DIR/NAME.
#
#   tools/fetch-sources.sh DIR LIST       LIST: lines of NAME VERSION SHA256, the sum of the .dsc
#
# Takes them from the Debian archive that this machine uses, with an apt of its own: the machine's
# package lists stay as they are, and root is not needed. The sum decides what is taken; the .dsc
# holds the sums of all else. Packages already fetched stay in DIR/archives. Does nothing when DIR was
# made from the same list before.
set -eu

[ $# -eq 2 ] || { sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2; }
mkdir -p "$1/archives"
directory=$(cd "$1" && pwd)
recipe=$(sed 's/#.*//; /^ *$/d' "$2")
made=$directory/.recipe # holds the recipe once all is done
[ "$(cat "$made" 2>/dev/null)" != "$recipe" ] || exit 0
rm -f "$made"

# The part of a version that is in names of files: without an epoch.
description() { echo "$directory/archives/$1_${2#*:}.dsc"; }

is_whole() {
  echo "$3  $(description "$1" "$2")" | sha256sum -c --status 2>/dev/null
}

private_apt() {
  apt-get -qq -o Dir::Etc::SourceList="$apt_home/sources.list" -o Dir::Etc::SourceParts=/dev/null \
    -o Dir::State="$apt_home" -o Dir::State::lists="$apt_home/lists" -o Dir::Cache="$apt_home" \
    -o APT::Sandbox::User=root -o APT::Update::Post-Invoke-Success=/bin/true \
    -o Acquire::Languages=none -o Acquire::Retries=3 "$@"
}

fetch() (
  apt_home=$directory/.apt
  rm -rf "$apt_home"
  mkdir -p "$apt_home/lists/partial"
  # shellcheck disable=SC2016 # apt expands these
  # The main archive, as this machine's own sources name it; security updates have another label.
  archive=$(apt-get indextargets --format '$(LABEL) $(REPO_URI)' 'Created-By: Packages' |
    awk '$1 == "Debian" {print $2; exit}')
  [ -n "$archive" ] || { echo "this machine's apt knows no Debian archive; try apt-get update" >&2; exit 3; }
  keyring=/usr/share/keyrings/debian-archive-keyring.gpg
  echo "deb-src [signed-by=$keyring] $archive bookworm main" >"$apt_home/sources.list"
  private_apt update
  mkdir "$apt_home/fetched"
  cd "$apt_home/fetched"
  # shellcheck disable=SC2086 # the names are separate words
  private_apt source --download-only $1 >/dev/null
  mv -f -- * "$directory/archives"
  rm -rf "$apt_home"
)

wanted=$(echo "$recipe" | while read -r name version sum; do
  is_whole "$name" "$version" "$sum" || echo "$name=$version"
done)
if [ -n "$wanted" ]; then
  echo "fetching sources: $(echo "$wanted" | tr '\n' ' ')"
  fetch "$wanted"
fi
echo "$recipe" | while read -r name version sum; do
  is_whole "$name" "$version" "$sum" || { echo "$(description "$name" "$version") has another sum" >&2; exit 3; }
  rm -rf "${directory:?}/$name"
  told=$(dpkg-source -q --no-copy -x "$(description "$name" "$version")" "$directory/$name" 2>&1) ||
    { echo "$told" >&2; exit 3; }
done
echo "$recipe" >"$made"
