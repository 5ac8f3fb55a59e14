# The tool alone: apt installs its libraries, it converts a frame, and its manual and completion work.
. /root/try/common
get kvx-demosaic
for library in libkvxmisc3 libkvxdemosaicing3 libkvxframe3; do
    have $library || { echo "$library was not installed with the tool"; exit 1; }
done
quiet kvx-demosaic demo /tmp/demo
quiet kvx-demosaic convert /tmp/demo/scene_768x512_BayerRG12.raw /tmp/demo/picture.png --algorithm ipp --tone srgb
quiet kvx-demosaic mosaic /tmp/demo/picture.png /tmp/demo/again.raw --format BayerRG8
[ "$(stat -c %s /tmp/demo/again.raw)" -eq $((768 * 512)) ]

get man-db bash-completion
man kvx-demosaic-convert | grep -q -e --algorithm
bash -c '
    source /usr/share/bash-completion/bash_completion
    _completion_loader kvx-demosaic
    COMP_WORDS=(kvx-demosaic conv) COMP_CWORD=1 COMP_LINE="kvx-demosaic conv" COMP_POINT=17
    _kvx_demosaic kvx-demosaic conv kvx-demosaic
    [ "${COMPREPLY[*]}" = convert ]'
echo "the tool converts a frame; manual and completion work"
