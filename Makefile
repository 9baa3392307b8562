# `make run` and `make test` work on a bare Debian machine.
# ARGS="…" passes arguments to the program with `make run`.

MAKEFLAGS += --no-print-directory
PACKAGES := packaging/install-packages packaging/debian-packages.txt
SOURCES = $(shell git ls-files --cached --others --exclude-standard '*.cpp' '*.h')

PREFIX ?= /usr/local
FUZZ_SECONDS ?= 600
FAULT_ROUNDS ?= 200
SECONDS ?= 300
KILL_EVERY ?= 600
# Tests with services, displays and several programs get up to three attempts, because on a machine
# under load another program may need longer than the test waits for it.
RUN_TESTS = ctest --preset $(1) --label-exclude services \
	&& ctest --preset $(1) --label-regex services --repeat until-pass:3

.PHONY: help run story demo screenshots test bench translations format check-format lint sanitize tsan gcc fuzz faults soak \
	thorough install package check-package packages clean
.DEFAULT_GOAL := help

help: ## Show this list
	@grep -hE '^[a-z-]+:.*## ' $(MAKEFILE_LIST) | sed 's/:.*## /\t/' | expand -t 16

packages:
	@$(PACKAGES)

# --fresh, because a change of the compiler would lose the other settings of a configured folder.
build/%/build.ninja: CMakePresets.json | packages
	cmake --fresh --preset $*

run: packages build/dev/build.ninja ## Build, then record changes of this machine, in a window where there is a display
	@cmake --build --preset dev --target tidemark tidemark-desktop
	@$(if $(ARGS),./build/dev/cli/tidemark $(ARGS),packaging/open ./build/dev/desktop/tidemark-desktop ./build/dev/cli/tidemark)

story: packages build/dev/build.ninja ## Build, then run the recorder for an example day
	@cmake --build --preset dev --target tidemark
	@packaging/story ./build/dev/cli/tidemark

demo: packages build/dev/build.ninja ## Build, then open the window over a made-up history
	@cmake --build --preset dev --target tidemark-demo
	@./build/dev/demo/tidemark-demo

screenshots: packages build/dev/build.ninja ## Write pictures of every screen into docs/screenshots
	@cmake --build --preset dev --target tidemark-demo
	@packaging/screenshots ./build/dev/demo/tidemark-demo docs/screenshots

test: packages build/dev/build.ninja ## Build, then run every test
	@cmake --build --preset dev
	@$(call RUN_TESTS,dev)

sanitize: packages build/sanitize/build.ninja ## Build with sanitizers, then run every test
	@cmake --build --preset sanitize
	@$(call RUN_TESTS,sanitize)

tsan: packages build/tsan/build.ninja ## Build with ThreadSanitizer, then run the tests that use threads
	@cmake --build --preset tsan
	@ctest --preset tsan

gcc: packages build/release/build.ninja ## Build everything optimised and with GCC, warnings as errors
	@cmake --build --preset release

faults: packages build/dev/build.ninja ## Kill, fill up and start twice, FAULT_ROUNDS times each
	@cmake --build --preset dev --target tidemark tidemark-desktop tidemark_preload
	@tests/faults/kill_loop build/dev/cli/tidemark --desktop build/dev/desktop/tidemark-desktop \
		--rounds $(FAULT_ROUNDS)
	@tests/faults/two_recorders build/dev/cli/tidemark --rounds $(FAULT_ROUNDS)
	@tests/faults/disk_full build/dev/cli/tidemark build/dev/tests/faults/libtidemark_preload.so

soak: packages build/dev/build.ninja ## Let something happen at every source for SECONDS, with kills
	@cmake --build --preset dev --target tidemark
	@tests/faults/soak build/dev/cli/tidemark --seconds $(SECONDS) --kill-every $(KILL_EVERY)

thorough: test sanitize tsan gcc lint faults fuzz ## All checks, hours in all: before a release

fuzz: ## Feed damaged files to their readers, each for FUZZ_SECONDS
	@packaging/install-packages packaging/debian-packages.txt packaging/debian-packages-fuzz.txt
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz
	@tests/fuzz/run $(FUZZ_SECONDS)

bench: packages build/release/build.ninja ## Measure everything that has a performance bound
	@cmake --build --preset release --target benchmarks
	@./bench/run build/release

install: packages build/release/build.ninja ## Build, then install below PREFIX (and DESTDIR)
	@# The unit of the service has the path of the program, and so the prefix.
	@cmake --preset release -DCMAKE_INSTALL_PREFIX="$(abspath $(PREFIX))" >/dev/null
	@cmake --build --preset release --target tidemark tidemark-desktop manual
	@cmake --install build/release

package: ## Build the Debian packages of the last commit into build/packages
	@packaging/install-packages packaging/debian-packages.txt packaging/debian-packages-package.txt
	@packaging/make-package build/packages

check-package: ## Build them twice, compare, and try them on a bare Debian system (as root)
	@packaging/install-packages packaging/debian-packages.txt packaging/debian-packages-package.txt \
		packaging/debian-packages-bare.txt
	@packaging/make-package build/packages
	@packaging/check-reproducible "$(CURDIR)/build/packages"
	@packaging/check-bare build/packages

translations: packages ## Bring the catalogues of the windows up to date with the sources
	@packaging/translations

format: packages ## Format all sources
	@clang-format-19 -i $(SOURCES)

check-format: packages ## Fail when a source is not formatted
	@clang-format-19 --dry-run --Werror $(SOURCES)

lint: ## Run clang-tidy over all sources
	@packaging/install-packages packaging/debian-packages.txt packaging/debian-packages-lint.txt
	@cmake --preset dev -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DTIDEMARK_BENCH=ON \
		-DTIDEMARK_FUZZ=ON -B build/lint >/dev/null
	@run-clang-tidy-19 -quiet -p build/lint /Unity/ $(filter %.cpp,$(abspath $(SOURCES)))

clean: ## Remove everything that was built
	rm -rf build
