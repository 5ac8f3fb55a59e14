# All packages at once, then none: nothing is left of them.
. /root/try/common
packages=$(sed -n 's/^Package: //p' /packages/Packages)
# shellcheck disable=SC2086  # names are words
get $packages
for package in $packages; do
    gzip -t "/usr/share/doc/$package/changelog.gz" "/usr/share/doc/$package/changelog.Debian.gz"
done
ldconfig -p | grep -q libKvxFrame.so.3
# shellcheck disable=SC2086
quiet apt-get purge -y -qq --autoremove $packages
left=$(find / -xdev -iname '*kvx*' -not -path '/packages/*' -not -path '/tmp/*' -not -path '/root/*' -not -path '/proc/*' \
    -not -path '/var/cache/man/*')  # what man has shown, it keeps
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
if ldconfig -p | grep Kvx; then echo "ldconfig still knows it"; exit 1; fi
echo "removed, and nothing is left"
