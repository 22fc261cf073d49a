# Set-up and everyday commands. Each target installs what is missing first.
PRESET ?= default
BUILD_DIR := $(if $(filter asan,$(PRESET)),build-asan,build)
SHELL := /bin/bash
# `make fuzz`: seconds per harness, how many run at once, and which (all when empty).
FUZZ_SECONDS ?= 60
FUZZ_JOBS ?= 1
FUZZ_READERS ?=

.PHONY: all bootstrap configure build run test package bench soak fuzz format clean

all: build

bootstrap:
	@./scripts/bootstrap

configure: bootstrap
	@cmake --preset $(PRESET) >/dev/null

build: configure
	@cmake --build --preset $(PRESET)

run: build
	@./scripts/run-app $(BUILD_DIR)/bin/hourfold $(ARGS)

test: build
	@cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2

# The crash campaign in its long form: 1,000 kills of the desktop program while it saves.
soak: build
	@cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen HOURFOLD_SOAK_ROUNDS=1000 ./bin/tst_crashcampaign

package: build
	@cmake --build --preset $(PRESET) --target package

bench: build
	@./scripts/run-bench $(BUILD_DIR)

fuzz:
	@./scripts/bootstrap fuzz
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz
	@./scripts/fuzz build-fuzz $(FUZZ_SECONDS) $(FUZZ_JOBS) $(FUZZ_READERS)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build build-asan build-fuzz
