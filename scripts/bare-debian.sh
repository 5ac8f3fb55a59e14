# Source this as root. bare_debian NAME [MIRROR] makes a bare Debian 12 in a folder, in_bare COMMAND... runs a command
# in it. bare_checkout NAME [MIRROR] adds a clone of the committed state of this checkout, in_checkout COMMAND runs a
# command in the clone. The folder is removed at the end of the script.
bare_debian() {
    [ "$(id -u)" -eq 0 ] || { echo "$0: run this as root"; exit 1; }
    command -v debootstrap > /dev/null || apt-get install -y -qq --no-install-recommends debootstrap > /dev/null
    root=$(mktemp -d "${TMPDIR:-/var/tmp}/$1.XXXXXX")
    trap remove_bare EXIT
    chmod 755 "$root"  # apt reads as another user
    debootstrap --variant=minbase bookworm "$root" "${2:-http://deb.debian.org/debian}" > "$root.log" 2>&1 ||
        { tail -5 "$root.log"; exit 1; }
    rm "$root.log"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
}

bare_checkout() {
    bare_debian "$@"
    git clone --quiet . "$root/root/KvxDemosaicing"
}

# Separate mounts and processes, which end with the command.
in_bare() {
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" "$@"
}

in_checkout() {
    in_bare /bin/bash -c "cd /root/KvxDemosaicing && $1"
}

remove_bare() {
    if findmnt --raw --noheadings --output TARGET | grep -q "^$root/"; then
        echo "Something is mounted below $root: not removed"
    else
        rm -rf --one-file-system "$root"
    fi
}
