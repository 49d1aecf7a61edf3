# The Debian packages of the project, for the scripts that install what is missing.

build_packages=(g++ cmake ninja-build qt6-base-dev libgl-dev zlib1g-dev libcli11-dev nlohmann-json3-dev libgtest-dev
  libgmock-dev libpng-dev)
# The toolkit looks for libthai where it breaks lines, and without it leaks what the loader says.
run_packages=(fonts-wqy-zenhei libthai0)
bench_packages=(libbenchmark-dev libspng-dev libstb-dev pkg-config)
