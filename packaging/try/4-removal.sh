# Installs all packages, then removes them and checks that nothing is left.
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
    -not -path '/var/cache/man/*')  # man keeps a cache
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
if ldconfig -p | grep Kvx; then echo "ldconfig still lists a library"; exit 1; fi
echo "removed, and nothing is left"
