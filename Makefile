# Tavrel: the two set-up commands are `make demo` and `make test`.
.PHONY: all deps deps-build release debug asan demo package install guide-screenshots test \
        test-asan bench fuzz format clean

FUZZ_SECONDS ?= 120

CTEST_FLAGS ?= --output-on-failure
DEMO_DIR := build/demo

all: release

# Packages by purpose (scripts/install-deps.sh --print SET lists them): `deps` is the test set,
# which holds the build set, which holds the runtime set.
deps:
	@bash scripts/install-deps.sh test

deps-build:
	@bash scripts/install-deps.sh build

release: deps
	cmake --preset release >/dev/null
	cmake --build --preset release

debug: deps
	cmake --preset debug >/dev/null
	cmake --build --preset debug

asan: deps
	cmake --preset asan >/dev/null
	cmake --build --preset asan

# Renders the bundled demo job into build/demo and, where a display exists, opens the main window.
# Only the build packages and only the two programs: no test tools, no tests, no benchmarks.
# The job is copied first so that what start-up writes back never touches examples/.
demo: deps-build
	cmake --preset release >/dev/null
	cmake --build --preset release --target tavrel tavrel-cli
	rm -rf $(DEMO_DIR) && mkdir -p $(DEMO_DIR)
	cp -r examples/demo/. $(DEMO_DIR)/
	build/release/bin/tavrel-cli render $(DEMO_DIR)/job.ini --pdf $(DEMO_DIR)/report.pdf \
	    --png $(DEMO_DIR)/pages
	@echo "Demo report: $(DEMO_DIR)/report.pdf (pages as PNG in $(DEMO_DIR)/pages)"
	@if [ -n "$$DISPLAY" ]; then build/release/bin/tavrel $(CURDIR)/$(DEMO_DIR)/job.ini; \
	else echo "No display: skipping the main window."; fi

# The Debian package (build/release/tavrel_VERSION_ARCH.deb) from a release build of the programs,
# the guide and the man pages; its dependencies come from dpkg-shlibdeps.
PACKAGE_TARGETS := tavrel tavrel-cli tavrel_docs
package: deps-build
	cmake --preset release >/dev/null
	cmake --build --preset release --target $(PACKAGE_TARGETS)
	cd build/release && cpack -G DEB

# Installs a release build under PREFIX (default /usr/local).
PREFIX ?= /usr/local
install: deps-build
	cmake --preset release >/dev/null
	cmake --build --preset release --target $(PACKAGE_TARGETS)
	cmake --install build/release --prefix $(PREFIX)

# Redraws the user guide's screenshots from the program itself under Xvfb.
guide-screenshots: deps
	cmake --preset release >/dev/null
	cmake --build --preset release --target tavrel tavrel-cli
	bash scripts/guide-screenshots.sh build/release

# The printing tests need a CUPS scheduler with the virtual PDF printer; the script starts one
# when run as root and is harmless otherwise.
test: debug
	@bash scripts/cups-setup.sh
	ctest --test-dir build/debug $(CTEST_FLAGS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer.
test-asan: asan
	@bash scripts/cups-setup.sh
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	    ctest --test-dir build/asan $(CTEST_FLAGS)

bench: release
	@bash bench/run.sh build/release/bin

# Each reader's libFuzzer target for FUZZ_SECONDS (clang, AddressSanitizer, UBSan).
fuzz: deps
	bash scripts/fuzz.sh $(FUZZ_SECONDS)

format:
	find src tests bench -name '*.cpp' -o -name '*.h' | xargs clang-format -i

clean:
	rm -rf build
