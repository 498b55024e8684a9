#!/usr/bin/env bash
# Installs the Debian packages the build, the host and the tests need, only when
# one of them is missing, so that repeated runs cost nothing. With --fuzz it also
# installs clang and its libFuzzer runtime for the fuzz build.
set -euo pipefail

# locales: the tests generate a German locale to check that numbers on the wire keep
# their decimal point. qttranslations5-l10n: Qt's own catalogues, for the standard
# buttons of message boxes in German. dpkg-dev: CPack's Debian package.
packages=(cmake g++ make qtbase5-dev qttools5-dev qttools5-dev-tools fonts-dejavu-core locales
          qttranslations5-l10n dpkg-dev)
[ "${1:-}" = "--fuzz" ] && packages+=(clang libclang-rt-14-dev)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
