# For scripts that try things on a bare Debian 12 in a folder; sourced, as root: bare_debian NAME MIRROR makes it, in_bare
# COMMAND... runs there. It goes when the script ends.
bare_debian() {
    [ "$(id -u)" -eq 0 ] || { echo "Only root can make a system in a folder."; exit 1; }
    command -v debootstrap > /dev/null || apt-get install -y -qq --no-install-recommends debootstrap > /dev/null
    root=$(mktemp -d "${TMPDIR:-/var/tmp}/$1.XXXXXX")
    trap remove_bare EXIT
    chmod 755 "$root"  # apt reads as a user of its own
    debootstrap --variant=minbase bookworm "$root" "$2" > "$root.log" 2>&1 || { tail -5 "$root.log"; exit 1; }
    rm "$root.log"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
}

# Mounts and processes of its own: both go with the last command, whatever becomes of it.
in_bare() {
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" "$@"
}

remove_bare() {
    if findmnt --raw --noheadings --output TARGET | grep -q "^$root/"; then
        echo "Something is mounted below $root: not removed."
    else
        rm -rf --one-file-system "$root"
    fi
}
