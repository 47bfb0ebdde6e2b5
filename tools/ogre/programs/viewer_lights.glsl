// What the lit programs share: the lights of the scene, colours, and the way to the screen.
const int LIGHTS = 8;
const float PI = 3.14159265;

uniform vec4 ambient;
uniform vec4 light_position[8];  // w is 0: the direction towards a light that is far away
uniform vec4 light_direction[8];
uniform vec4 light_colour[8];
uniform vec4 light_cone[8];  // spots: cosines of the inner and the outer half angle, falloff, 1

// Images hold colours for screens; light adds up in proportion to its energy.
vec3 to_linear(vec3 colour)
{
	return pow(max(colour, 0.0), vec3(2.2));
}

// Bends what is brighter than the screen over instead of cutting it off.
vec3 to_screen(vec3 light)
{
	light *= 1.35;
	vec3 soft = light * (1.0 + light / 9.0) / (1.0 + light * 0.55);
	return pow(clamp(soft, 0.0, 1.0), vec3(1.0 / 2.2));
}

// The direction from `place` to light `i`, and in w how much of the light arrives.
vec4 towards_light(int i, vec3 place)
{
	vec3 way = light_position[i].xyz - place * light_position[i].w;
	vec3 direction = way / max(length(way), 1e-6);
	float part = 1.0;
	if (light_cone[i].w > 0.5) {
		float edge = dot(-direction, light_direction[i].xyz);
		part = clamp((edge - light_cone[i].y) / max(light_cone[i].x - light_cone[i].y, 1e-4), 0.0, 1.0);
	}
	return vec4(direction, part);
}

// Light that comes from everywhere is a little stronger from above, so that unlit sides keep their shape.
vec3 ambient_light(vec3 normal)
{
	return to_linear(ambient.rgb) * (1.0 + 0.35 * normal.y) * 2.0;
}
