# Tavrel: the two set-up commands are `make demo` and `make test`.
.PHONY: all deps release debug asan demo test test-asan bench fuzz format clean

FUZZ_SECONDS ?= 120

CTEST_FLAGS ?= --output-on-failure
DEMO_DIR := build/demo

all: release

deps:
	@bash scripts/install-deps.sh

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
# The job is copied first so that what start-up writes back never touches examples/.
demo: release
	rm -rf $(DEMO_DIR) && mkdir -p $(DEMO_DIR)
	cp -r examples/demo/. $(DEMO_DIR)/
	build/release/bin/tavrel-cli render $(DEMO_DIR)/job.ini --pdf $(DEMO_DIR)/report.pdf \
	    --png $(DEMO_DIR)/pages
	@echo "Demo report: $(DEMO_DIR)/report.pdf (pages as PNG in $(DEMO_DIR)/pages)"
	@if [ -n "$$DISPLAY" ]; then build/release/bin/tavrel $(CURDIR)/$(DEMO_DIR)/job.ini; \
	else echo "No display: skipping the main window."; fi

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
