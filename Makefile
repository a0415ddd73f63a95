# The two commands of this project: `make demo` and `make test`. `make asan` runs the suite in a
# second tree under ASan and UBSan (with the fuzz tests when clang builds it); `make fuzz` runs
# each fuzzer for FUZZ_SECONDS.
BUILD   ?= build
PRESET  ?= default
JOBS    ?= $(shell nproc)
ASAN_BUILD   ?= build-asan
FUZZ_SECONDS ?= 600
SANITIZER_ENV = QT_QPA_PLATFORM=offscreen UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1

.PHONY: demo test deps configure build bench clean asan asan-build fuzz

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

asan-build: deps
	@test -f $(ASAN_BUILD)/build.ninja || cmake --preset asan
	@cmake --build $(ASAN_BUILD) -j $(JOBS)

asan: asan-build
	@cd $(ASAN_BUILD) && $(SANITIZER_ENV) ctest --output-on-failure -j $(JOBS) --timeout 900

fuzz: deps
	@test -f $(ASAN_BUILD)/build.ninja || cmake --preset asan
	@cmake --build $(ASAN_BUILD) --target qy_fuzz -j $(JOBS)
	@$(SANITIZER_ENV) bash tools/fuzz.sh $(ASAN_BUILD)/tests/qy_fuzz $(FUZZ_SECONDS)

# The render phases for 10^5..10^8 points (10^8 needs about 1.6 GB), the scatter, and the same
# workload through the comparison library when its program was built.
RENDER_SIZES ?= 100000 1000000 10000000 100000000
bench: build
	@$(BUILD)/bench/qy-bench
	@for n in $(RENDER_SIZES); do \
	  for prog in qy-render-bench qcp-render-bench; do \
	    test -x $(BUILD)/bench/$$prog || continue; \
	    echo "== $$prog line N=$$n"; \
	    $(BUILD)/bench/$$prog $$n 1600 1000 1 line $$(test $$n -ge 100000000 && echo zoom); \
	  done; \
	done
	@for prog in qy-render-bench qcp-render-bench; do \
	  test -x $(BUILD)/bench/$$prog || continue; \
	  echo "== $$prog scatter N=100000"; $(BUILD)/bench/$$prog 100000 1600 1000 1 scatter; \
	done

clean:
	@rm -rf $(BUILD) $(ASAN_BUILD)
