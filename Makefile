# Tarvel: the two everyday commands are `make run` and `make test`.
PRESET ?= dev
BUILD_DIR := build/$(PRESET)

.PHONY: run test test-asan deps configure build format bench clean

# Builds only the app and the store, optimised, in build/run, then starts them.
run: deps
	cmake --preset run
	cmake --build --preset run
	./scripts/run.sh build/run

test: deps
	cmake --preset ci
	cmake --build --preset ci
	ctest --preset ci --output-on-failure

# The suite again under AddressSanitizer and UndefinedBehaviorSanitizer (build/asan).
test-asan: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan --output-on-failure

deps:
	./scripts/install-deps.sh

configure:
	cmake --preset $(PRESET)

build: configure
	cmake --build --preset $(PRESET)

bench: deps
	cmake --preset ci
	cmake --build --preset ci
	./scripts/bench.sh build/ci

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i --style=file

clean:
	rm -rf build
