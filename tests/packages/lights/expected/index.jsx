<root>
	<node
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "point" }}
			diffuse={{ r: 1.000000, g: 1.000000, b: 1.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 1.000000, b: 1.000000 }}>
		</light>
	</node>
	<node
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "spot" }}
			diffuse={{ r: 1.000000, g: 0.500000, b: 0.250000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 0.500000, b: 0.250000 }}>
		</light>
	</node>
	<node
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 1.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 1.000000, g: 0.500000, b: 0.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 0.500000, b: 0.000000 }}>
		</light>
	</node>
	<node
		orientation={{ w: -0.707107, x: -0.707107, y: -0.000000, z: -0.000000 }}
		position={{ x: 1.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 0.800000, g: 0.400000, b: 0.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 0.800000, g: 0.400000, b: 0.000000 }}>
		</light>
		<node
			orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}
			position={{ x: 1.000000, y: 0.000000, z: 0.000000 }}
			scale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>
		</node>
	</node>
	<node
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 0.250000, g: 0.250000, b: 0.250000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 0.250000, g: 0.250000, b: 0.250000 }}>
		</light>
	</node>
	<node
		orientation={{ w: -0.707107, x: -0.707107, y: -0.000000, z: -0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 0.200000, g: 0.200000, b: 0.200000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 0.200000, g: 0.200000, b: 0.200000 }}>
		</light>
	</node>
	<node
		k="v"
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "point" }}
			diffuse={{ r: 1.000000, g: 1.000000, b: 1.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 1.000000, b: 1.000000 }}>
		</light>
	</node>
</root>

