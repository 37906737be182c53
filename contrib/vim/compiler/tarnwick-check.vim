" SPDX-License-Identifier: Apache-2.0
" Vim compiler file for tarnwick-check, the checker beside the converter. Its findings have
" the converter's warning shape, so the converter's 'errorformat' reads them.
" Install: copy beside tarnwick.vim; then
"   :compiler tarnwick-check
"   :make -p HART -d texts.dct     checks the current file, options first
if exists("current_compiler")
  finish
endif
runtime compiler/tarnwick.vim
let current_compiler = "tarnwick-check"
CompilerSet makeprg=tarnwick-check\ $*\ %:S
" The summary line closes the output; it is no finding.
CompilerSet errorformat^=%-Gtarnwick-check:\ %.%#
