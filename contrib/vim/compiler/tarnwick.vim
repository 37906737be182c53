" SPDX-License-Identifier: Apache-2.0
" Vim compiler file for tarnwick, the EDDL to XML converter.
" Install: copy to ~/.vim/compiler/ (or add contrib/vim to 'runtimepath'); then
"   :compiler tarnwick
"   :make -p HART -I include -o %<.xml -c     converts the current file, options after it
" and :copen lists the diagnostics; Enter on one jumps to its file and line. The file comes
" first because every option takes the next argument, -c included: so -c can go last.
if exists("current_compiler")
  finish
endif
let current_compiler = "tarnwick"
if exists(":CompilerSet") != 2
  command -nargs=* CompilerSet setlocal <args>
endif

CompilerSet makeprg=tarnwick\ %:S\ $*

" One entry per line shape, the lexer's (a blank before the parenthesis) first:
"   file (line): error: message            lexer
"   file(line): error|warning|information: message
"   file(line) error: message              an imported item whose name is taken
"   file(line)Error: message               LIKE resolution
" The banner and the empty line after it are dropped; the lines that follow a multi-line
" message (the include path) stay as plain text.
CompilerSet errorformat=%f\ (%l):\ %trror:\ %m,
                       \%f(%l):\ %trror:\ %m,
                       \%f(%l):\ %tarning:\ %m,
                       \%f(%l):\ %tnformation:\ %m,
                       \%f(%l)\ %trror:\ %m,
                       \%f(%l)%trror:\ %m,
                       \%-GTarnwick\ -\ Release:%.%#,
                       \%-G
