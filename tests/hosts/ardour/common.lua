-- Functions of the session scripts: settings files, values of the plug-in, and reports.

-- Reads lines of title, shown text, step/steps and an optional sample number; `value` is the host's
-- value from 0 to 1.
function read_settings(path)
    local settings = {}
    for line in io.lines(path) do
        local title, shown, step, steps, at = line:match("^(%w+)%s+(%S+)%s+(%d+)/(%d+)%s*(%d*)$")
        if title then
            settings[#settings + 1] = { title = title, shown = shown, value = step / steps,
                                        at = tonumber(at) }
        else
            assert(line:match("^#") or line == "", path .. ": " .. line)
        end
    end
    assert(#settings > 0, path .. ": no settings")
    return settings
end

-- The value rounded to a 32-bit float, as the host stores it.
function as_float(x)
    return (string.unpack("f", string.pack("f", x)))
end

-- Prints a line; its first word distinguishes it from the host's output.
function report(...)
    print("report", ...)
    io.stdout:flush()
end

-- Index, title and default of every parameter of a plug-in.
function parameters(insert)
    local plugin = insert:plugin(0)
    local list = {}
    for index = 0, plugin:parameter_count() - 1 do
        if plugin:parameter_is_control(index) and plugin:parameter_is_input(index) then
            local _, out = plugin:get_parameter_descriptor(index, ARDOUR.ParameterDescriptor())
            list[#list + 1] = { index = index, title = out[2].label, default = out[2].normal }
        end
    end
    return list
end

-- The n-th plug-in of a track, from 0.
function insert_of(session, track, n)
    local processor = session:route_by_name(track):nth_plugin(n or 0)
    assert(not processor:isnil(), "no plug-in on track " .. track)
    local insert = processor:to_insert()
    assert(not insert:isnil(), "track " .. track .. " has a placeholder instead of the plug-in")
    return insert, processor
end

-- Parses words of the form NAME=SETTINGS into a list.
function tracks_of(words)
    local tracks = {}
    for _, word in ipairs(words) do
        local name, file = word:match("^([^=]+)=(.*)$")
        assert(name, "not NAME=SETTINGS: " .. word)
        tracks[#tracks + 1] = { name = name, settings = file }
    end
    return tracks
end
