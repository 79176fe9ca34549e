# drive_completion.fish FILE: asks fish what it would complete, from FILE alone; in the folder that drive_completion
# asks in.
source $argv[1]
set -g failures 0

function check
    set -l answers (complete -C$argv[1] | string replace -r '\t.*' '' | string join ' ')
    test "$answers" = "$argv[2]"; and return
    printf 'fish: after "%s" comes "%s", not "%s"\n' $argv[1] "$answers" $argv[2]
    set -g failures (math $failures + 1)
end

check 'searchpath fi' 'files find'
check 'searchpath cache ' 'verify write'
check 'searchpath cache write v' ''
check 'searchpath find --pol' --policy
check 'searchpath find --policy i' ignore-case
check 'searchpath shadows --only same' same-file
check 'searchpath list --path mio:mi' 'mio:mine/ mio:mio/'
check 'searchpath list --path @l' '@list.txt'
check 'searchpath list --path 5%s:@l' '5%s:@list.txt'
check 'searchpath add mi' 'mine/ mio/'
check 'searchpath help do' doctor
test $failures = 0
