complete --command vantrel --no-files
complete --command vantrel --short-option h --long-option help --description 'Show the help'
complete --command vantrel --short-option v --long-option version --description 'Show the version'
complete --command vantrel --condition __fish_is_first_token \
    --arguments '(__fish_complete_directories)'
