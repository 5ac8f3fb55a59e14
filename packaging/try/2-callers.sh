# The development packages with CMake and pkg-config: first the library alone, then the frame layer.
. /root/try/common
expect() { [ "$($2)" = "$1" ] || { echo "$2 printed '$($2)'"; exit 1; }; }
quiet apt-get purge -y -qq --autoremove kvx-demosaic
get g++ make cmake pkgconf libkvxdemosaicing-dev
if have libkvxframe3; then echo "libkvxdemosaicing-dev installs the frame layer"; exit 1; fi
cd /tmp
# shellcheck disable=SC2046  # the flags are words
cc -std=c11 /root/examples/convert.c -o by_pc_c $(pkg-config --cflags --libs KvxDemosaicing)
# shellcheck disable=SC2046
c++ -std=c++17 /root/examples/convert.cpp -o by_pc_cpp $(pkg-config --cflags --libs KvxDemosaicing)
expect "128 128 128" ./by_pc_c
expect "100 100 100" ./by_pc_cpp
quiet cmake -S /root/examples -B alone
quiet cmake --build alone
expect "128 128 128" alone/convert_c
expect "100 100 100" alone/convert_cpp
[ ! -e alone/frame ]

get libkvxframe-dev
# shellcheck disable=SC2046
c++ -std=c++17 /root/examples/frame.cpp -o by_pc_frame $(pkg-config --cflags --libs KvxFrame)
expect "BayerRG12p to RGB8: 187 187 187" ./by_pc_frame
quiet cmake -S /root/examples -B both
quiet cmake --build both
expect "BayerRG12p to RGB8: 187 187 187" both/frame
echo "callers in C and C++ build and run, by CMake and by pkg-config"
