# Installs missing packages of the groups in scripts/lib/packages. To be sourced.

# Prints the packages of the given groups.
packagesOf() {
    local list group
    list="$(dirname "${BASH_SOURCE[0]}")/packages"
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' "$list"
    done
}

isInstalled() {
    [[ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

asRoot() {
    if [[ $EUID -eq 0 ]]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

aptInstall() {
    asRoot apt-get install --yes --quiet --no-install-recommends "$@"
}

installPackages() {
    local package missing=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not Debian: please install these packages or their equivalents yourself:" \
            $(packagesOf "$@") >&2
        return
    fi
    for package in $(packagesOf "$@"); do
        isInstalled "$package" || missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0
    if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
        echo "Missing packages: ${missing[*]}. Please install them as root." >&2
        return 1
    fi
    echo "Installing: ${missing[*]}"
    # Update the package lists only if the installation fails without it.
    aptInstall "${missing[@]}" || { asRoot apt-get update --quiet && aptInstall "${missing[@]}"; }
}
