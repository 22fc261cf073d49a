# Set-up and everyday commands. Each target installs what is missing first.
PRESET ?= default
BUILD_DIR := $(if $(filter asan,$(PRESET)),build-asan,build)
SHELL := /bin/bash

.PHONY: all bootstrap configure build run test package bench format clean

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

package: build
	@cmake --build --preset $(PRESET) --target package

bench: build
	@./scripts/run-bench $(BUILD_DIR)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build build-asan
