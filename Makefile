# The two commands that do everything, and a few that do less.
#
#   make run      install what is missing, build, run the demo script on the shipped job
#   make test     the same, then every test
#   make arm      the tests for 32-bit and 64-bit ARM, cross-built and run under an emulator
#   make sdk      plug-in and desk against the file system of an older Debian, as if it were a vendor's SDK
#   make userlands plug-in and a host against older Debians, all architectures, Lua as C and as C++
#   make packages all packages, for PCs and both ARMs, into build/packages; tries each in a clean root
#   make sanitize, make clang   the tests under sanitizers, or built with clang
#   make fuzz     each fuzz target for FUZZ_SECONDS (60), FUZZ_JOBS (1) of them side by side
#   make threads  the panel's page, clicks and scripts for THREAD_SECONDS (60) under ThreadSanitizer
#   make soak     20,000 loads by 1,000 plug-ins loaded and unloaded, the unit tests under valgrind
#   make coverage what the tests reach of the plug-in, held against tests/coverage/unreached.txt
#   make bench    times and memory against the host's documents and tables, and the goals for them
#   make peers    the same jobs with what scripts would use instead: other Lua libraries
#   make cost     instructions, memory and code size on PCs and both ARMs, as one table
#   make growth   what the commands do with documents of many shapes grows with their size, memory too
#   make robustness   the figures of docs/robustness.md anew
#   make pictures the drawing in README.md anew
#   make web      the desk as WebAssembly, into build/web; make test-web runs sessions and jobs through it
#   make lint     clang-tidy over everything
#   make subjects the form of commit subjects
#   make format   format the sources
#   make browser  install what the browser test needs: without it make test skips that one
#
# JOBS is how many processes build and test side by side; default: one for each processor.
.PHONY: run test build sanitize clang arm armhf arm64 sdk userlands packages fuzz threads soak \
        coverage bench peers cost growth robustness pictures web test-web lint subjects format \
        browser setup setup-arm clean

JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 60
FUZZ_JOBS ?= 1
THREAD_SECONDS ?= 60

run: build
	build/cusdesk run examples/demo.lua

test: run
	ctest --preset release -j$(JOBS) --output-on-failure
	@tools/print-figures.sh build/Testing/Temporary/LastTest.log

build: setup
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

sanitize clang: setup
	cmake --preset $@
	cmake --build --preset $@ -j $(JOBS)
	ctest --preset $@ -j$(JOBS) --output-on-failure

arm: setup-arm build
	@tools/test-arm.sh $(JOBS)

armhf arm64: setup-arm
	tools/make-sysroot.sh build/sysroots/$@ $@ bookworm
	cmake --preset $@
	cmake --build --preset $@ -j $(JOBS)

sdk: setup-arm
	tools/make-sysroot.sh build/sysroots/sdk armhf bullseye $$(sed 's/#.*//' tools/sysroot-packages-sdk.txt)
	cmake --preset armhf -B build/sdk -DCUS_SYSROOT=build/sysroots/sdk -DCUS_SDK_CLANG=clang++-14 \
	  -DCUS_PANEL_PAGE=OFF
	cmake --build build/sdk -j $(JOBS) --target cusdesk Custom_LuaParseModule
	ctest --test-dir build/sdk -j$(JOBS) --output-on-failure -R '^(session\..*|plugin\.boundary)$$'

userlands: setup-arm
	tools/try-userlands.sh $(JOBS)

packages: build armhf arm64
	@tools/install-missing-packages.sh packages-debian.txt
	tools/build-packages.sh build build/armhf build/arm64

fuzz: setup
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	python3 fuzz/run_fuzzers.py build/fuzzers --seconds $(FUZZ_SECONDS) --jobs $(FUZZ_JOBS)

threads: setup
	cmake --preset threads
	cmake --build --preset threads -j $(JOBS)
	PYTHONPATH=tests/support python3 tests/desk/panel/threads_test.py build/threads/cusdesk $(THREAD_SECONDS)

soak: build
	tests/robustness/run_valgrind.sh build
	build/bin/soak build/libCustom_LuaParseModule.so 1000

coverage: setup
	cmake --preset coverage
	cmake --build --preset coverage -j $(JOBS)
	find build/coverage -name '*.gcda' -delete
	ctest --preset coverage -j$(JOBS)
	python3 tests/coverage/check_coverage.py . build/coverage $(JOBS)

bench: build
	python3 bench/ratios.py build/bin/cusbench build/bin/cusmemory

peers: build
	tools/install-missing-packages.sh packages-peers.txt
	python3 bench/peers.py build/cusdesk build/bin/make_job

cost: build armhf arm64
	python3 bench/cost_table.py build

growth: setup-arm build
	python3 bench/growth.py build/cusdesk build/bin/view_documents build/bin/libcount_instructions.so $(JOBS)

web:
	@tools/install-missing-packages.sh packages.txt packages-web.txt
	tools/fetch-sources.sh build/web-sources web/sources.txt
	cmake --preset web
	cmake --build --preset web -j $(JOBS)

test-web: build web
	ctest --preset web -j$(JOBS)

# Half of the processors: the other half is for what the tests start.
robustness: setup-arm build
	ctest --preset release --output-on-failure -j$$((($(JOBS) + 1) / 2)) \
	  -R '^(file_faults|download|heap_faults|lua_memory)_test|^robustness|^session.isolation|^panel|^fuzz.replay'
	cp build/Testing/Temporary/LastTest.log build/robustness.log
	python3 bench/growth.py build/cusdesk build/bin/view_documents build/bin/libcount_instructions.so $(JOBS) | tee -a build/robustness.log
	python3 bench/flood.py build/cusdesk build/bin/make_job | tee -a build/robustness.log
	tools/write-figures.sh build/robustness.log

pictures: build
	build/cusdesk draw examples/mnt/data/CustomFileDir/JsonFile/window.json --bar 3 -q -o docs/drawing.svg

lint: setup
	cmake --preset clang
	git ls-files '*.cpp' ':!tests' ':!bench' ':!examples' ':!web' | python3 tools/lint.py build/clang $(JOBS)

subjects:
	python3 tools/check_subjects.py

format: setup
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

browser:
	tools/install-browser-test.sh

setup:
	@tools/install-missing-packages.sh

setup-arm:
	@tools/install-missing-packages.sh packages.txt packages-arm.txt

clean:
	rm -rf build
