# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT

function __flipside_has_no_command
    not string match --quiet --regex -- '^--' (commandline --tokenize --cut-at-cursor)[2..]
end

complete --command flipside --no-files
complete --command flipside --condition __flipside_has_no_command --long-option record --description 'Start a recording, or go on with the paused one'
complete --command flipside --condition __flipside_has_no_command --long-option pause --description 'Pause the recording or the playback'
complete --command flipside --condition __flipside_has_no_command --long-option stop --description 'Stop the recording or the playback'
complete --command flipside --condition __flipside_has_no_command --long-option toggle --description 'Stop the recording that runs, else do as --record'
complete --command flipside --condition __flipside_has_no_command --long-option play --description 'Play the last recording, or go on with the paused playback'
complete --command flipside --condition __flipside_has_no_command --long-option show --description 'Show the last recording in the file manager'
complete --command flipside --condition __flipside_has_no_command --long-option status --description 'Say state, elapsed time, device and file'
complete --command flipside --condition '__fish_contains_opt status' --long-option json --description 'Say the status as JSON'
complete --command flipside --condition __flipside_has_no_command --long-option quit --description 'Close the card'
complete --command flipside --condition __flipside_has_no_command --long-option version --description 'Say the version'
complete --command flipside --condition __flipside_has_no_command --long-option help --description 'Say how it is used'
