# The two commands of this project: `make demo` and `make test`.
BUILD   ?= build
PRESET  ?= default
JOBS    ?= $(shell nproc)

.PHONY: demo test deps configure build bench clean

deps:
	@bash tools/install-deps.sh

configure: deps
	@test -f $(BUILD)/build.ninja || cmake --preset $(PRESET)

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

demo: build
	@$(BUILD)/examples/gallery/qy-gallery $(ARGS)

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) --timeout 600

bench: build
	@$(BUILD)/bench/qy-bench
	@$(BUILD)/bench/qy-render-bench 1000000 1600 1000 1 line

clean:
	@rm -rf $(BUILD)
