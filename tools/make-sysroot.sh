#!/bin/sh
# Makes a folder that stands for another machine's file system: headers and libraries of another
# architecture, or of an older Debian.
#
#   tools/make-sysroot.sh DIR ARCHITECTURE SUITE [PACKAGE...]     default: sysroot-packages.txt
#
# Takes the packages and all they depend on from the Debian archive that this machine uses, with an
# apt of its own: the machine's packages, its architectures and its package lists stay as they are,
# and root is not needed. Packages are unpacked, not configured: their scripts never run. A package
# named as NAME! comes without what it depends on. Does nothing when DIR was made the same way before,
# makes it anew when it was made another way, and leaves alone what it did not make.
set -eu

[ $# -ge 3 ] || { sed -n '2,11s/^# \{0,1\}//p' "$0" >&2; exit 2; }
directory=$1 architecture=$2 suite=$3
shift 3
# shellcheck disable=SC2046 # the names are separate words
[ $# -gt 0 ] || set -- $(sed 's/#.*//' "$(dirname "$0")/sysroot-packages.txt")
recipe="$architecture $suite $*"
made=$directory/.recipe # holds the recipe once all is done; without it the folder is not ours
[ "$(cat "$made" 2>/dev/null)" != "$recipe" ] || exit 0
if [ ! -f "$made" ] && [ -e "$directory" ] && [ -n "$(ls -A "$directory")" ]; then
  echo "$directory is not empty, and it is no root that this script made: take another folder" >&2
  exit 3
fi

echo "making the $architecture root $directory from $suite"
rm -rf "$directory"
mkdir -p "$directory"
echo unfinished >"$made"
apt_home=$directory/.apt
mkdir -p "$apt_home/lists/partial" "$apt_home/archives/partial"
apt_home=$(cd "$apt_home" && pwd)

# The main archive, as this machine's own sources name it; security updates have another label.
archive=$(apt-get indextargets --format '$(LABEL) $(REPO_URI)' 'Created-By: Packages' |
  awk '$1 == "Debian" {print $2; exit}')
[ -n "$archive" ] || { echo "this machine's apt knows no Debian archive; try apt-get update" >&2; exit 3; }
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
echo "deb [signed-by=$keyring] $archive $suite main" >"$apt_home/sources.list"
: >"$apt_home/status"

private_apt() {
  apt-get -qq -o APT::Architecture="$architecture" -o APT::Architectures="$architecture" \
    -o Dir::State="$apt_home" -o Dir::State::lists="$apt_home/lists" \
    -o Dir::State::status="$apt_home/status" -o Dir::Cache="$apt_home" \
    -o Dir::Cache::archives="$apt_home/archives" -o Dir::Etc::SourceList="$apt_home/sources.list" \
    -o Dir::Etc::SourceParts=/dev/null -o Dir::Etc::Preferences=/dev/null \
    -o Dir::Etc::PreferencesParts=/dev/null -o APT::Sandbox::User=root \
    -o APT::Update::Post-Invoke-Success=/bin/true -o Acquire::Languages=none \
    -o Acquire::Retries=3 "$@"
}

whole= alone=
for package in "$@"; do
  case $package in
    *!) alone="$alone ${package%!}" ;;
    *) whole="$whole $package" ;;
  esac
done
private_apt update
# shellcheck disable=SC2086 # the names are separate words
private_apt install -y --no-install-recommends --download-only $whole >/dev/null
# shellcheck disable=SC2086
[ -z "$alone" ] || (cd "$apt_home/archives" && private_apt download $alone >/dev/null)

for package in "$apt_home"/archives/*.deb; do
  dpkg-deb -x "$package" "$directory"
done
# Links that name places from the root would leave the folder.
find "$directory" -path "$apt_home" -prune -o -type l -lname '/*' -print | while read -r link; do
  ln -snf "$(realpath -sm --relative-to="$(dirname "$link")" "$directory$(readlink "$link")")" "$link"
done
rm -rf "$apt_home"
echo "$recipe" >"$made"
